// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/jsonfile.h"

#include <QMap>
#include <QVariantMap>

/// Named maps, each in a file of its own in the directory Persist: read by the constructor,
/// written by the destructor.
class PersistStore
{
public:
    PersistStore();
    ~PersistStore();
    Q_DISABLE_COPY(PersistStore)

    static PersistStore &instance();

    /// Names to maps; a name is a file's name without ".json".
    QMap<QString, QVariantMap> &entries() { return m_entries; }

    /// Reads the files anew.
    void load();
    void save();

private:
    QString m_directory;
    QMap<QString, JsonFile> m_files;
    QMap<QString, QVariantMap> m_entries;
};
