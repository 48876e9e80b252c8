// SPDX-License-Identifier: MIT
#pragma once

#include "browser/webview.h"

#include <QVariant>

/// A boolean, an integer, a double, a string or a list of them; anything else becomes null.
ScriptValue toScript(const QVariant &value);

/// The other way. A number whose text is all digits is an int, any other a double; null and what
/// is undefined are invalid.
QVariant fromScript(const ScriptValue &value);
QVariantList fromScript(const QVector<ScriptValue> &values);
