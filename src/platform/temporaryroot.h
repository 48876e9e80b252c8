// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Folder of this user alone for everything that this program keeps only for a while; made when it
/// isn't there. It lies under XDG_CACHE_HOME when that is set to an absolute path, else in the
/// system's folder for temporary files. As users of one machine share the latter, a name that
/// another user or a symbolic link has taken gets "-" and the user's numeric id behind it, and
/// when that is taken too, the folder lies in the user's home.
QString temporaryRoot();
