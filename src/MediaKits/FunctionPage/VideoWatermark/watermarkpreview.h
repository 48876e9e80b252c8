// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"
#include "MediaKits/MediaTasksManager/filealiases.h"

#include <QVariantList>

/// The filter graph that shows marks in the player as the file will have them: it is the file's
/// own.
class WatermarkPreview
{
public:
    /// @param video of the source, as probed
    void setVideo(const VEncParam &video) { m_video = video; }
    /// @param marks plain maps
    /// @return empty when nothing is to be seen; holds as long as no other is made
    QString graph(const QVariantList &marks);

private:
    VEncParam m_video;
    FileAliases m_aliases;
};
