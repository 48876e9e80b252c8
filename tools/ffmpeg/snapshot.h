// SPDX-License-Identifier: MIT
#pragma once

#include "ffmpeg/outputwords.h"
#include "ffmpeg/sourcefacts.h"

namespace ffmpeglauncher {

/// A picture that is taken of a film gets the colours that a conversion of the film has. Files of
/// pictures don't tell theirs, and ffmpeg by itself takes large films for small ones and high range
/// for usual one. Does nothing for films, or where the output has no filter of its own.
void adaptSnapshot(OutputWords *output, const SourceFacts &facts);

} // namespace ffmpeglauncher
