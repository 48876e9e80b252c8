// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/persiststore.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"

#include <QDir>

PersistStore::PersistStore() : m_directory(dataDir() + QStringLiteral("/Persist"))
{
    load();
}

PersistStore::~PersistStore()
{
    save();
}

void PersistStore::load()
{
    m_files.clear();
    m_entries.clear();
    const QDir dir(m_directory);
    const QFileInfoList files =
        dir.entryInfoList({QStringLiteral("*.json")}, QDir::Files | QDir::CaseSensitive);
    for (const QFileInfo &info : files) {
        JsonFile file(info.filePath());
        const QVariantMap entry = file.read().toVariantMap();
        file.compareWith(QJsonObject::fromVariantMap(entry));
        const QString name = info.completeBaseName();
        m_files.insert(name, file);
        if (file.hasObject())
            m_entries.insert(name, entry);
    }
}

void PersistStore::save()
{
    for (auto it = m_entries.cbegin(); it != m_entries.cend(); ++it) {
        const QString path = m_directory + QLatin1Char('/') + it.key() + QStringLiteral(".json");
        if (!m_files.contains(it.key()))
            m_files.insert(it.key(), JsonFile(path));
        m_files[it.key()].write(QJsonObject::fromVariantMap(it.value()), QJsonDocument::Indented);
    }
}

PersistStore &PersistStore::instance()
{
    static PersistStore store;
    return store;
}
