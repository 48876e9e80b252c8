// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/videorowwidget.h"

#include "catalogue/encparamcatalog.h"
#include "MediaKits/MediaFormats/mediaformats.h"

namespace {

constexpr quint32 audioKind = 2;

bool isAudio(const EncParam &preset)
{
    return EncParamCatalog::categoryKind(preset.displayCategoryID) == audioKind;
}

TaskRowWidget::Kind withVideo(TaskRowWidget::Kind kind)
{
    kind.form.detail = QLatin1String("Res");
    return kind;
}

} // namespace

VideoRowWidget::VideoRowWidget(const RowItem &item, const Kind &kind, QWidget *parent)
    : PresetRowWidget(item, withVideo(kind), parent)
{
}

bool VideoRowWidget::editorAllowed() const
{
    return PresetRowWidget::editorAllowed() && !isSpecialFormat(sourceSuffix());
}

void VideoRowWidget::showSize()
{
    applyPreset(EncParamCatalog::instance().encParam(encParamInfoID()).data());
}

void VideoRowWidget::onSourceProbed(const MediaInfoData &info)
{
    showCutLength();
    const QString size = MediaFacts::sizeInPixels(info.video);
    if (size.isEmpty())
        return;
    const auto preset = EncParamCatalog::instance().encParam(encParamInfoID());
    change([&](RowContent &content) {
        content.in.detail = size;
        if (content.out.detail.isEmpty() && !(preset && isAudio(*preset)))
            content.out.detail = size;
    });
}

void VideoRowWidget::onResultProbed(const MediaInfoData &info)
{
    const QString size = MediaFacts::sizeInPixels(info.video);
    if (!size.isEmpty())
        change([&](RowContent &content) { content.out.detail = size; });
}

void VideoRowWidget::applyPreset(const EncParam *preset)
{
    const QString fixed = fixedSize();
    const auto video = preset ? preset->video : nullptr;
    const auto crop = param().cropRect;
    QString given = MediaFacts::sizeInPixels(video);
    if (given.isEmpty() && crop)
        given = MediaFacts::sizeInPixels(crop->width, crop->height);
    change([&](RowContent &content) {
        if (!fixed.isEmpty())
            content.out.detail = fixed;
        else if (preset && isAudio(*preset))
            content.out.detail.clear();
        else
            content.out.detail = given.isEmpty() ? content.in.detail : given;
    });
}
