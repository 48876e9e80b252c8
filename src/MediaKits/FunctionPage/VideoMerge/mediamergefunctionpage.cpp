// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoMerge/mediamergefunctionpage.h"

#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatdialog.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergelistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVariant>

namespace {
constexpr QSize nameSize(240, 32);
}

MediaMergeFunctionPage::MediaMergeFunctionPage(QWidget *parent)
    : PresetListPage({MediaFunction::Merge, VideoFormatClass, videoFormats,
                      createRowsView<MediaMergeListWidget>},
                     parent)
{
}

void MediaMergeFunctionPage::setUpChoices(QWidget *choices)
{
    m_list = static_cast<MediaMergeListWidget *>(&rows());
    PresetListPage::setUpChoices(choices);
    raiseChoices();
    nameStart(QStringLiteral("btnMerge"), tr("开始合并"), tr("正在合并"));

    auto *row = static_cast<QBoxLayout *>(choices->layout());
    row->setContentsMargins(16, 12, 16, 12);
    m_lblResultSize = new QLabel(choices);
    m_lblResultSize->setObjectName(QStringLiteral("lblResultSize"));
    row->addWidget(m_lblResultSize);
    connect(m_list, &MediaMergeListWidget::resultSizeChanged, this,
            &MediaMergeFunctionPage::showResultSize);
    showResultSize();
    row->addStretch(1);
    row->addWidget(new QLabel(tr("视频名称："), choices));
    m_ledtOutName = new QLineEdit(setting(FunctionKey::outName).toString(), choices);
    m_ledtOutName->setObjectName(QStringLiteral("ledtOutName"));
    m_ledtOutName->setAccessibleName(tr("视频名称"));
    m_ledtOutName->setPlaceholderText(MediaMergeListWidget::defaultName());
    m_ledtOutName->setFixedSize(nameSize);
    row->addWidget(m_ledtOutName);
    m_list->setOutName(m_ledtOutName->text());
    connect(m_ledtOutName, &QLineEdit::textChanged, this,
            &MediaMergeFunctionPage::on_ledtOutName_textChanged);
}

void MediaMergeFunctionPage::setUpFormatDialog(MediaFormatDialog &dialog)
{
    dialog.setOpenSize(m_list->firstSize());
}

void MediaMergeFunctionPage::showResultSize()
{
    const QString size =
        MediaFacts::sizeInPixels(m_list->resultSize().width(), m_list->resultSize().height());
    m_lblResultSize->setText(size.isEmpty() ? QString() : tr("画面：%1").arg(size));
}

void MediaMergeFunctionPage::on_btnMerge_clicked()
{
    m_list->setOutName(m_ledtOutName->text());
    m_list->merge();
}

void MediaMergeFunctionPage::on_ledtOutName_textChanged(const QString &arg1)
{
    storeSetting(FunctionKey::outName, arg1);
    m_list->setOutName(arg1);
}
