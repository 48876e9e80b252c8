// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Fragments/sharedmap.h"

/// A watermark: the map that becomes one of the overlays of a `ConvertTaskParam`, shared by its row
/// in the editor's list and its box over the picture. Beside the overlay's keys it has
/// "aspectKeep" (bool), whether a picture keeps its shape when it is resized.
using Mark = SharedMap;

namespace MarkKey {
inline const QString filter = QStringLiteral("filter");
inline const QString text = QStringLiteral("text");
inline const QString startTime = QStringLiteral("startTime");
inline const QString endTime = QStringLiteral("endTime");
inline const QString rect = QStringLiteral("rect");
inline const QString opacity = QStringLiteral("opacity");
inline const QString font = QStringLiteral("font");
inline const QString fontcolor = QStringLiteral("fontcolor");
inline const QString imagefile = QStringLiteral("imagefile");
inline const QString aspectKeep = QStringLiteral("aspectKeep");
} // namespace MarkKey

namespace MarkFilter {
inline const QString text = QStringLiteral("drawtext");
inline const QString image = QStringLiteral("watermark");
inline const QString delogo = QStringLiteral("delogo");
} // namespace MarkFilter

/// Whether a mark is in the picture at that time. Without an end it lasts for the whole film, as it
/// does in the file.
bool isSeenAt(const QVariantMap &mark, int ms);
/// Copies of the maps, which nobody shares.
QVariantList plainMarks(const QVariantList &marks);
/// Shared maps of plain ones, each with a map of its own.
QVariantList sharedMarks(const QVariantList &maps);
