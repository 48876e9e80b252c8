// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/videorowwidget.h"

#include "catalogue/encparamcatalog.h"
#include "MediaKits/MediaFormats/mediaformats.h"

namespace {

constexpr quint32 audioKind = 2;
constexpr double quarterTurn = 90.0;

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
    showLength();
    const QString size = MediaFacts::sizeInPixels(info.video);
    if (size.isEmpty())
        return;
    change([&](RowContent &content) { content.in.detail = size; });
    showSize();
}

void VideoRowWidget::onResultProbed(const MediaInfoData &info)
{
    const QString size = MediaFacts::sizeInPixels(info.video);
    if (!size.isEmpty())
        change([&](RowContent &content) { content.out.detail = size; });
}

// The size of the source's picture, turned by what was chosen in an editor.
QString VideoRowWidget::keptSize() const
{
    const auto info = sourceInfo();
    if (!info || !info->video)
        return {};
    const auto turned = QSharedPointer<VEncParam>::create(*info->video);
    if (param().beauty)
        turned->rotate += quarterTurn * param().beauty->rotate;
    return MediaFacts::sizeInPixels(turned);
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
            content.out.detail = given.isEmpty() ? keptSize() : given;
    });
}
