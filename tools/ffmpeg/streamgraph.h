// SPDX-License-Identifier: MIT
#pragma once

#include "ffmpeg/graphtext.h"

#include <string>

namespace ffmpeglauncher {

/// The filter graph of one of the program's commands, whose last picture has a label that begins
/// with "vrt" and whose last sound one that begins with "art".
class StreamGraph
{
public:
    /// @param text empty for a command without a graph
    explicit StreamGraph(const std::string &text);

    /// False when the text is no filter graph; then nothing can be added.
    bool isReadable() const { return m_readable; }
    const std::string &text() const { return m_text; }

    bool givesPicture() const { return !pictureEnd().name.empty(); }
    bool givesSound() const { return !soundEnd().name.empty(); }
    /// Whether the picture is made faster or slower.
    bool changesSpeed() const;

    /// Adds filters, joined by commas, to the source's picture, behind the filters that crop it and
    /// fit it into a frame: the fewest pixels, and nothing drawn on them yet.
    void addBehindSize(const std::string &filters);
    /// Adds filters to the last picture. Does nothing when it comes out of a filter together with
    /// the sound.
    void addToPicture(const std::string &filters);
    /// Adds filters to the last sound, with the same exception; the last of them may have further
    /// outputs with labels that other chains take.
    void addToSound(const std::string &filters);
    /// Puts whole chains in front of all others.
    void prepend(const std::string &chains);

private:
    GraphLabel pictureEnd() const;
    GraphLabel soundEnd() const;
    void addBefore(const GraphLabel &end, const std::string &filters);
    void setText(const std::string &text);

    std::string m_text;
    Graph m_graph;
    bool m_readable = true;
};

} // namespace ffmpeglauncher
