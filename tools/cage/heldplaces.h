// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace cage {

/// Opens the folders in which a tool is to write, for the whole run of this process, so that what
/// is allowed there is allowed in no other that takes the same name later. See openWorkPlace() for
/// what is refused. Folders that lead through no marker directory stay as they are.
/// @param folders paths, which become such that lead to what was opened
/// @return the folder that is refused; empty when none is
std::string holdPlaces(std::vector<std::string> *folders);

} // namespace cage
