// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/convertrowwidget.h"

#include "MediaKits/MediaFormats/mediatexts.h"

#include <QDir>
#include <QFileInfo>

namespace {
// A factor of the playing time that is this small was never set.
constexpr double leastSpeed = 0.1;
} // namespace

ConvertRowWidget::ConvertRowWidget(const RowItem &item, const Kind &kind, QWidget *parent)
    : TaskRowWidget(item, kind, parent)
{
    const QFileInfo file(sourcePath());
    param().inputFormat = file.suffix().toLower();
    renameResult(param().outputName.isEmpty() ? file.completeBaseName() : param().outputName);
}

ConvertTaskParam &ConvertRowWidget::param() const
{
    return *static_cast<ConvertTaskParam *>(task()->param());
}

QString ConvertRowWidget::outputPath() const
{
    if (!task())
        return {};
    const ConvertTaskParam &wanted = param();
    return QDir(wanted.outputDir).filePath(wanted.outputName + QLatin1Char('.') + wanted.format);
}

void ConvertRowWidget::setOutputDir(const QString &dir)
{
    param().outputDir = dir;
}

QString ConvertRowWidget::outputName() const
{
    return param().outputName;
}

void ConvertRowWidget::setOutputName(const QString &name)
{
    param().outputName = name;
}

QString ConvertRowWidget::outputFormat() const
{
    return param().format;
}

void ConvertRowWidget::onResultMoved(const QString &path)
{
    renameResult(QFileInfo(path).completeBaseName());
}

void ConvertRowWidget::keepSource(const QSharedPointer<MediaInfoData> &info)
{
    param().sourceInfo = info;
    param().durationMs = int(info->format->duration);
    TaskRowWidget::keepSource(info);
}

void ConvertRowWidget::showLength()
{
    const auto range = param().timeRange;
    const int used = range ? range->end - range->start : param().durationMs;
    const double speed = param().beauty ? double(param().beauty->speed) : 1.0;
    const int length = speed > leastSpeed ? int(used / speed) : used;
    change([&](RowContent &content) { content.out.duration = timeText(length); });
}
