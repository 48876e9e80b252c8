// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QSharedPointer>
#include <QVariantMap>

/// A watermark: the map that becomes one of the overlays of a `ConvertTaskParam`, shared by its row
/// in the editor's list and its box over the picture. Beside the overlay's keys it has
/// "aspectKeep" (bool), whether a picture keeps its shape when it is resized.
using Mark = QSharedPointer<QVariantMap>;

Q_DECLARE_METATYPE(QSharedPointer<QVariantMap>)

namespace MarkKey {
inline constexpr QLatin1String filter("filter");
inline constexpr QLatin1String text("text");
inline constexpr QLatin1String startTime("startTime");
inline constexpr QLatin1String endTime("endTime");
inline constexpr QLatin1String rect("rect");
inline constexpr QLatin1String opacity("opacity");
inline constexpr QLatin1String font("font");
inline constexpr QLatin1String fontcolor("fontcolor");
inline constexpr QLatin1String imagefile("imagefile");
inline constexpr QLatin1String aspectKeep("aspectKeep");
} // namespace MarkKey

namespace MarkFilter {
inline constexpr QLatin1String text("drawtext");
inline constexpr QLatin1String image("watermark");
inline constexpr QLatin1String delogo("delogo");
} // namespace MarkFilter

/// Copies of the maps, which nobody shares.
QVariantList plainMarks(const QVariantList &marks);
/// Shared maps of plain ones, each with a map of its own.
QVariantList sharedMarks(const QVariantList &maps);
