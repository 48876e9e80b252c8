// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The text of `morvane-cli --help`.
QString helpText();
