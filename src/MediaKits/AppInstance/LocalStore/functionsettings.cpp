// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"

#include "catalogue/encparamcatalog.h"
#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/outputdirs.h"

namespace {

struct SectionRow
{
    QLatin1String section;
    OutputFunction output;
    // 0 for a function without presets.
    quint32 encParamId;
};

const SectionRow sectionRows[] = {
    {FunctionSection::beautifier, BeautifyOutput, EncParamCatalog::defaultKeepSourceId},
    {FunctionSection::compressor, CompressOutput, 0},
    {FunctionSection::converter, ConvertOutput, EncParamCatalog::defaultKeepSourceId},
    {FunctionSection::cutter, CutOutput, EncParamCatalog::defaultKeepSourceId},
    {FunctionSection::merger, MergeOutput, EncParamCatalog::defaultHdId},
    {FunctionSection::gif, GifOutput, 0},
    {FunctionSection::dubbing, DubbingOutput, EncParamCatalog::defaultHdId},
    {FunctionSection::shot, ShotOutput, 0},
    {FunctionSection::watermark, WatermarkOutput, EncParamCatalog::defaultKeepSourceId},
    {FunctionSection::audioConverter, AudioConvertOutput, EncParamCatalog::defaultAudioId},
    {FunctionSection::screenCap, ScreencapOutput, 0},
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
    for (const SectionRow &row : sectionRows) {
        store(map, row.section, FunctionKey::outPath, defaultOutputDir(row.output));
        if (row.encParamId != 0)
            store(map, row.section, FunctionKey::encParamID, row.encParamId);
    }
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
    m_map = m_file.read().toVariantMap();
    merge(m_map, defaults());
}

FunctionSettings::~FunctionSettings()
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
}
