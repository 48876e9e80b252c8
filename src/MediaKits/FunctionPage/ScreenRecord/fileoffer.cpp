// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/fileoffer.h"

#include "controls/elidedlabel.h"
#include "MediaKits/FunctionPage/Framework/Rows/mediarowwidget.h"
#include "MediaKits/MediaFormats/revealfile.h"
#include "MediaKits/Player/mediapreviewwnd.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVariant>

namespace {
constexpr QMargins margins(16, 6, 8, 6);
constexpr int spacing = 8;
} // namespace

FileOffer::FileOffer(QWidget *parent) : QWidget(parent), m_text(new ElidedLabel(this))
{
    setProperty("cls", QStringLiteral("noticeStrip"));
    setAttribute(Qt::WA_StyledBackground);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(margins);
    row->setSpacing(spacing);
    m_text->setObjectName(QStringLiteral("lblText"));
    row->addWidget(m_text, 1);
    const auto addButton = [&](const char *name, const QString &text, const auto &act) {
        auto *button = new QPushButton(text, this);
        button->setObjectName(QLatin1String(name));
        button->setProperty("cls", QStringLiteral("link"));
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, act);
    };
    addButton("btnPlayFile", tr("播放"), [this] { play(); });
    addButton("btnOpenDir", tr("打开文件夹"), [this] { revealInFileManager(m_files.last()); });
    addButton("btnDismiss", tr("知道了"), [this] { offer({}, {}); });
    hide();
}

void FileOffer::offer(const QString &text, const QStringList &files)
{
    m_files = files;
    m_text->setFullText(text);
    setHidden(files.isEmpty());
}

void FileOffer::play() const
{
    const QVariantMap info =
        MediaRowWidget::previewInfo(MediaFunction::Screencap, QStringLiteral("手动"));
    for (const QString &file : m_files)
        MediaPreviewWnd::addFinished(file, info);
    MediaPreviewWnd::showFile(m_files.last(), info);
}
