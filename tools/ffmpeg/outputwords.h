// SPDX-License-Identifier: MIT
#pragma once

#include "ffmpeg/commandline.h"
#include "ffmpeg/encoders.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace ffmpeglauncher {

enum class StreamKind { Picture, Sound };

struct PictureSize
{
    int width = 0; ///< pixels, 0 for unknown
    int height = 0;

    bool isKnown() const { return width > 0 && height > 0; }
};

/// Reads and changes the words of one output of an argument list. Outputs behind it have to be
/// done with: their places move.
class OutputWords
{
public:
    OutputWords(std::vector<std::string> *arguments, const CommandOutput &output);

    const std::string &path() const { return m_path; }
    /// The multiplexer's name as -f gives it, else the suffix in lower case.
    std::string container() const;

    bool hasFlag(std::string_view flag) const;
    /// Whether one of the options is there, with or without a stream's number behind it.
    bool has(std::initializer_list<std::string_view> options) const;
    /// The option's last value, empty when it isn't there.
    std::string value(std::string_view option) const;

    /// The encoder that is named for such streams, "copy" included; empty when ffmpeg is to choose.
    std::string namedEncoder(StreamKind kind) const;
    /// What is known of the encoder that is named, or else the container's; null where nothing is
    /// known or there is nothing to code.
    const VideoEncoder *videoEncoder() const;
    const AudioEncoder *audioEncoder() const;
    /// As the command names it, else unknown.
    PictureSize size() const;

    /// Returns false when no codec option has the value `from`.
    bool replaceEncoder(std::string_view from, std::string_view to);
    void setValue(std::string_view option, const std::string &value);

    void insert(const std::string &option, const std::string &value);
    void insertFlag(const std::string &flag);
    /// Adds options and values that are divided by blanks.
    void insertAll(std::string_view words);

private:
    std::vector<std::string> *m_arguments;
    CommandOutput m_output;
    std::string m_path;
};

} // namespace ffmpeglauncher
