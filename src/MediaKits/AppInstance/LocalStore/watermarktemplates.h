// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/jsonfile.h"

#include <QStringList>

#include <utility>

/// The user's templates of watermarks by their names, in WatermarkTemplates.json: read by the
/// constructor, written at each change. What a template holds is the editor's to know.
class WatermarkTemplates
{
public:
    WatermarkTemplates();
    Q_DISABLE_COPY(WatermarkTemplates)

    static WatermarkTemplates &instance();

    /// In the order of the alphabet.
    QStringList names() const { return m_templates.keys(); }
    /// Empty for a name that there is none of.
    QJsonObject value(const QString &name) const { return m_templates[name].toObject(); }
    /// Replaces one of the same name.
    /// @return whether it is in the file
    bool set(const QString &name, const QJsonObject &value);
    bool remove(const QString &name);
    /// Where a file that couldn't be understood has been kept; told once, empty when there is none.
    QString takeAsidePath() { return std::exchange(m_asidePath, {}); }

private:
    bool write();

    JsonFile m_file;
    QJsonObject m_templates;
    QString m_asidePath;
};
