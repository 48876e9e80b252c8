// SPDX-License-Identifier: MIT
#pragma once

/// Takes over the user's locale and, when its character set isn't UTF-8 (a shell with LANG=C),
/// puts C.UTF-8 in its place for this process and its children, so that file names in any script
/// survive. Call it first in main(), before any file name is used and any application object
/// exists: Qt looks at the character set only once.
void ensureUtf8Locale();
