// SPDX-License-Identifier: MIT
#include "ffmpeg/commandline.h"

#include <string_view>

namespace ffmpeglauncher {

namespace {

// The options of ffmpeg 5.1 without a value; most also exist with "no" in front. Autorotate and
// autoscale are without value in that form alone.
constexpr std::string_view flagNames =
    " y n hide_banner vn an sn dn stdin stats shortest re accurate_seek copyts copyinkf"
    " start_at_zero copy_unknown ignore_unknown recast_media find_stream_info fix_sub_duration"
    " bitexact benchmark benchmark_all auto_conversion_filters debug_ts dump force_fps hex psnr"
    " noautorotate noautoscale qphist report vstats xerror L h help ? version buildconf formats"
    " muxers demuxers devices codecs decoders encoders bsfs protocols filters pix_fmts layouts"
    " sample_fmts dispositions colors hwaccels ";

bool isListed(const std::string &name)
{
    return name.find(' ') == std::string::npos &&
           flagNames.find(' ' + name + ' ') != std::string_view::npos;
}

bool isFlag(const std::string &argument)
{
    const std::string name = argument.substr(1, argument.find(':') - 1);
    return isListed(name) || (name.compare(0, 2, "no") == 0 && isListed(name.substr(2)));
}

} // namespace

CommandLine parseCommandLine(const std::vector<std::string> &arguments)
{
    CommandLine command;
    CommandOutput current;
    bool afterDashes = false; // the word behind "--" is a path, even with a dash in front
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string &argument = arguments[i];
        if (argument == "--") {
            afterDashes = true;
        } else if (afterDashes || argument.size() < 2 || argument[0] != '-') {
            current.path = i;
            current.insertAt = afterDashes ? i - 1 : i;
            command.outputs.push_back(current);
            current = {};
            afterDashes = false;
        } else if (isFlag(argument)) {
            current.flags.push_back(i);
        } else if (i + 1 < arguments.size()) {
            command.options.push_back({i, i + 1});
            current.options.push_back({i, i + 1});
            if (argument == "-i")
                current = {};
            ++i;
        }
    }
    return command;
}

} // namespace ffmpeglauncher
