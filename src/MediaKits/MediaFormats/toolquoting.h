// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// `path` as one argument inside a command text that QProcess::splitCommand() will divide,
/// quotes included; whatever characters it holds, the tool gets them unchanged. A relative path
/// that a tool would read as an option or as a protocol ("-x", "data:x") gets "./" in front.
/// An empty path can't be written in such a text: it gives no argument.
///
/// Fill several into a template with one multi-argument QString::arg() call: a path may hold "%1".
QString quoteToolPath(const QString &path);
