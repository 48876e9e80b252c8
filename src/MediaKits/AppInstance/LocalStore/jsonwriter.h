// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

class QJsonObject;

/// The JSON text of usage events: compact, pure ASCII, numbers without an exponent and with at
/// most six decimals.
class JsonWriter
{
public:
    /// Appends the object's text. Characters from U+0080 up are left out of it.
    static void objectToJson(const QJsonObject &object, QByteArray &json);
};
