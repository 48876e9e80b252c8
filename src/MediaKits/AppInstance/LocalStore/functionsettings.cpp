// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"

#include "catalogue/encparamcatalog.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/mediafunction.h"

namespace {

struct PresetRow
{
    MediaFunction function;
    quint32 encParamId;
};

// Of the functions with presets.
const PresetRow presetRows[] = {
    {MediaFunction::Convert, EncParamCatalog::defaultKeepSourceId},
    {MediaFunction::Cut, EncParamCatalog::defaultKeepSourceId},
    {MediaFunction::Merge, EncParamCatalog::defaultHdId},
    {MediaFunction::Beautify, EncParamCatalog::defaultKeepSourceId},
    {MediaFunction::Dubbing, EncParamCatalog::defaultHdId},
    {MediaFunction::Watermark, EncParamCatalog::defaultKeepSourceId},
    {MediaFunction::AudioConvert, EncParamCatalog::defaultAudioId},
};

void store(QVariantMap &map, QLatin1String section, QLatin1String key, const QVariant &value)
{
    QVariantMap entries = map.value(section).toMap();
    entries.insert(key, value);
    map.insert(section, entries);
}

QVariantMap defaults()
{
    QVariantMap map;
    for (int n = int(MediaFunction::Convert); n <= int(MediaFunction::Screencap); ++n) {
        const auto function = MediaFunction(n);
        store(map, functionRecord(function).section, FunctionKey::outPath,
              defaultOutputDir(function));
    }
    for (const PresetRow &row : presetRows)
        store(map, functionRecord(row.function).section, FunctionKey::encParamID, row.encParamId);
    store(map, FunctionSection::compressor, FunctionKey::compressRate, 0.75);
    store(map, FunctionSection::merger, FunctionKey::outName, QStringLiteral("合并视频"));
    return map;
}

void merge(QVariantMap &target, const QVariantMap &source)
{
    for (auto it = source.cbegin(); it != source.cend(); ++it) {
        const int type = it.value().userType();
        const bool isMissing =
            !target.contains(it.key()) ||
            (type == QMetaType::QString && target.value(it.key()).toString().isEmpty());
        if (isMissing) {
            target.insert(it.key(), it.value());
        } else if (type == QMetaType::QVariantMap) {
            QVariantMap inner = target.value(it.key()).toMap();
            merge(inner, it.value().toMap());
            target.insert(it.key(), inner);
        }
    }
}

} // namespace

FunctionSettings::FunctionSettings() : m_file(dataDir() + QStringLiteral("/SFunction.json"))
{
    load();
}

FunctionSettings::~FunctionSettings()
{
    save();
}

void FunctionSettings::load()
{
    m_map = m_file.read().toVariantMap();
    merge(m_map, defaults());
    m_file.compareWith(QJsonObject::fromVariantMap(m_map));
}

void FunctionSettings::save()
{
    m_file.write(QJsonObject::fromVariantMap(m_map), QJsonDocument::Indented);
}

FunctionSettings &FunctionSettings::instance()
{
    static FunctionSettings settings;
    return settings;
}

QVariant FunctionSettings::value(QLatin1String section, QLatin1String key) const
{
    return m_map.value(section).toMap().value(key);
}

void FunctionSettings::setValue(QLatin1String section, QLatin1String key, const QVariant &value)
{
    store(m_map, section, key, value);
    m_saving.request();
}
