// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistitemwidget.h"

#include "catalogue/encparamcatalog.h"
#include "MediaKits/FunctionPage/VideoConvert/mediaconvertlistwidget.h"
#include "MediaKits/MediaFormats/mediaformats.h"

namespace {

constexpr quint32 audioKind = 2;

TaskRowWidget::Kind convertRows()
{
    TaskRowWidget::Kind kind;
    kind.page = MediaConvertListWidget::page;
    kind.reportsFailures = true;
    kind.form.detail = QLatin1String("Res");
    kind.form.editorButton = QLatin1String("btnCut");
    kind.form.editorToolTip = MediaConvertListItemWidget::tr("剪裁");
    return kind;
}

} // namespace

MediaConvertListItemWidget::MediaConvertListItemWidget(QListWidgetItem *item, QWidget *parent)
    : PresetRowWidget(RowItem(item), convertRows(), parent)
{
    change([this](RowContent &content) { content.editorEnabled = editorAllowed(); });
    probeSource();
}

bool MediaConvertListItemWidget::editorAllowed() const
{
    return !isSpecialFormat(sourceSuffix());
}

void MediaConvertListItemWidget::connectForm(TaskRowForm &form)
{
    PresetRowWidget::connectForm(form);
    connect(&form, &TaskRowForm::editorPressed, this,
            &MediaConvertListItemWidget::on_btnCut_clicked);
}

void MediaConvertListItemWidget::takeSource(const MediaInfoData &info)
{
    const QString size = MediaFacts::sizeInPixels(info.video);
    if (size.isEmpty())
        return;
    const bool toAudio = EncParamCatalog::instance().kindOf(encParamInfoID()) == audioKind;
    change([&](RowContent &content) {
        content.in.detail = size;
        if (content.out.detail.isEmpty() && !toAudio)
            content.out.detail = size;
    });
}

void MediaConvertListItemWidget::takeResult(const MediaInfoData &info)
{
    const QString size = MediaFacts::sizeInPixels(info.video);
    if (!size.isEmpty())
        change([&](RowContent &content) { content.out.detail = size; });
}

void MediaConvertListItemWidget::takePreset(const EncParam *preset)
{
    change([&](RowContent &content) {
        if (preset && EncParamCatalog::categoryKind(preset->displayCategoryID) == audioKind) {
            content.out.detail.clear();
        } else if (!preset || !preset->video) {
            content.out.detail = content.in.detail;
        } else {
            const QString size = MediaFacts::sizeInPixels(preset->video);
            if (!size.isEmpty())
                content.out.detail = size;
        }
    });
}

void MediaConvertListItemWidget::on_btnCut_clicked()
{
    showCutNotice();
}
