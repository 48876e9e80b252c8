// SPDX-License-Identifier: MIT
#include "ffmpeg/openedfiles.h"

#include "ffmpeg/commandline.h"
#include "ffmpeg/graphtext.h"

#include <algorithm>
#include <iterator>

namespace ffmpeglauncher {

namespace {

constexpr std::string_view filePrefix = "file:";

bool startsWith(std::string_view text, std::string_view prefix)
{
    return text.substr(0, prefix.size()) == prefix;
}

std::string folderOf(const std::string &path)
{
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string plainPath(const std::string &word)
{
    return startsWith(word, filePrefix) ? word.substr(filePrefix.size()) : word;
}

// Options of filters that name a file.
bool namesFile(const std::string &filter, const std::string &option)
{
    static const std::string names[] = {"filename", "fontfile", "textfile", "file"};
    const bool isSource = filter == "movie" || filter == "amovie";
    return (option.empty() && isSource) ||
           std::find(std::begin(names), std::end(names), option) != std::end(names);
}

// Of "a=1:b=2", where the first may stand without its name.
void addFilesOf(const GraphFilter &filter, std::vector<std::string> *files)
{
    std::string_view rest = filter.options;
    for (bool isFirst = true; !rest.empty(); isFirst = false) {
        size_t end = 0;
        const std::string word = graphToken(rest, ":", &end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        const size_t equals = word.find('=');
        const bool isNamed = equals != std::string::npos &&
                             word.find_first_not_of("abcdefghijklmnopqrstuvwxyz_") == equals;
        const std::string name = isNamed ? word.substr(0, equals) : std::string();
        if ((isNamed || isFirst) && namesFile(filter.name, name))
            files->push_back(plainPath(isNamed ? word.substr(equals + 1) : word));
    }
}

bool isFilterOption(const std::string &name)
{
    return name == "-vf" || name == "-af" || name == "-lavfi" || startsWith(name, "-filter");
}

} // namespace

OpenedFiles openedFiles(const std::vector<std::string> &arguments)
{
    OpenedFiles files;
    const CommandLine line = parseCommandLine(arguments);
    for (const CommandOption &option : line.options) {
        const std::string &name = arguments[option.name];
        const std::string &value = arguments[option.value];
        if (name == "-i") {
            const std::string path = plainPath(value);
            files.read.push_back(path);
            // It may be the pattern of many.
            if (path.find('%') != std::string::npos)
                files.read.push_back(folderOf(path));
        } else if (isFilterOption(name)) {
            for (const GraphChain &chain : parseGraph(value).value_or(Graph())) {
                for (const GraphFilter &filter : chain)
                    addFilesOf(filter, &files.read);
            }
        }
    }
    for (const CommandOutput &output : line.outputs) {
        const std::string &path = arguments[output.path];
        if (path != "-" && !startsWith(path, "pipe:"))
            files.written.push_back(folderOf(plainPath(path)));
    }
    return files;
}

} // namespace ffmpeglauncher
