// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QStringList>

#include <optional>

/// Reads the fields of one option's JSON object; what isn't as it should be is remembered, so that
/// a reader asks once at the end.
class JsonFields
{
public:
    /// @param text of the object
    /// @param known all keys that it may have
    JsonFields(const QString &text, const QStringList &known);

    bool areGood() const { return m_areGood; }
    bool has(const QString &key) const { return m_json.contains(key); }
    QJsonValue value(const QString &key) const { return m_json.value(key); }

    /// A text that may be missing, but not empty.
    QString text(const QString &key);
    /// A number within its bounds.
    double number(const QString &key, double fallback, double least, double most);
    /// Seconds as ms.
    int ms(const QString &key, int fallback = 0);
    /// For what only the reader can tell to be wrong.
    void refuseUnless(bool isGood) { m_areGood = m_areGood && isGood; }

private:
    QJsonObject m_json;
    bool m_areGood;
};
