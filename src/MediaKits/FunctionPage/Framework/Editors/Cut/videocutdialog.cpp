// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutdialog.h"

#include "controls/runmodal.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/cropedit.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"

#include <QPushButton>

VideoCutDialog::VideoCutDialog(QWidget *parent) : VideoCutEditor(tr("视频剪裁"), parent)
{
    setObjectName(QStringLiteral("VideoCutDialog"));
    connect(confirmButton(), &QPushButton::clicked, this, &VideoCutDialog::on_btnSave_clicked);
}

void VideoCutDialog::setSettings(const CutSettings &settings)
{
    m_settings = settings;
    span().setSpan(settings.timeRange);
    crop().setCrop(settings.cropRect);
}

CutSettings VideoCutDialog::marked() const
{
    return {span().span(TimeSpanBinding::endTolerance), crop().crop()};
}

bool VideoCutDialog::isChanged() const
{
    const CutSettings now = marked();
    return !isSameSelection(now.timeRange, m_settings.timeRange) ||
           !isSameSelection(now.cropRect, m_settings.cropRect);
}

void VideoCutDialog::on_btnSave_clicked()
{
    m_settings = marked();
    accept();
}

std::optional<CutSettings> VideoCutDialog::edit(const QString &file, const MediaInfoData &info,
                                                const CutSettings &settings, QWidget *row)
{
    auto *dialog = new VideoCutDialog(row);
    dialog->showMedium(file, info);
    dialog->setSettings(settings);
    return runModal(dialog, [](const VideoCutDialog &saved) { return saved.settings(); });
}
