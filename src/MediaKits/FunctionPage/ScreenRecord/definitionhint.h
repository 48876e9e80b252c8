// SPDX-License-Identifier: MIT
#pragma once

class QString;

/// The size in which a definition records this screen, and whether that enlarges it.
/// @param definition of Screencap::Definition
QString definitionHint(int definition);
