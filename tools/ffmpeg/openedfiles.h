// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace ffmpeglauncher {

/// What a command names of the file system.
struct OpenedFiles
{
    std::vector<std::string> read;    ///< files, and folders of numbered pictures
    std::vector<std::string> written; ///< folders of the outputs
};

/// The files of a command's inputs, filters and outputs. Nothing that an input names in its own
/// content is among them.
/// @param arguments without the program
OpenedFiles openedFiles(const std::vector<std::string> &arguments);

} // namespace ffmpeglauncher
