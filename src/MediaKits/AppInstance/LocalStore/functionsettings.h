// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/delayedsave.h"
#include "MediaKits/AppInstance/LocalStore/jsonfile.h"

#include <QLatin1String>
#include <QVariantMap>

/// Section names of FunctionSettings.
namespace FunctionSection {
inline const QLatin1String beautifier{"BEAUTIFER"};
inline const QLatin1String compressor{"COMPRESSOR"};
inline const QLatin1String converter{"COVERTER"};
inline const QLatin1String cutter{"CUTTER"};
inline const QLatin1String merger{"MERGER"};
inline const QLatin1String gif{"GIF"};
inline const QLatin1String dubbing{"DUBBING"};
inline const QLatin1String shot{"SHOT"};
inline const QLatin1String watermark{"WATERMARK"};
inline const QLatin1String audioConverter{"AUDIO_CONVERTER"};
inline const QLatin1String screenCap{"SCREEN_CAP"};
} // namespace FunctionSection

/// Keys within a section.
namespace FunctionKey {
/// Unsigned id of a preset; not in every section.
inline const QLatin1String encParamID{"encParamID"};
/// Directory with forward slashes.
inline const QLatin1String outPath{"outPath"};
/// Share of the source's size, in the section of the compressor.
inline const QLatin1String compressRate{"compressRate"};
/// Base name of the result, in the section of the merger.
inline const QLatin1String outName{"outName"};
/// Whether colours are chosen for each result, in the section of the GIFs; not there for no.
inline const QLatin1String highQuality{"highQuality"};
} // namespace FunctionKey

/// The user's settings of each function in SFunction.json: read by the constructor, which adds
/// what is missing from the defaults, and written soon after a change and by the destructor.
class FunctionSettings
{
public:
    FunctionSettings();
    ~FunctionSettings();
    Q_DISABLE_COPY(FunctionSettings)

    static FunctionSettings &instance();

    /// Section names to maps.
    QVariantMap &map() { return m_map; }
    /// Invalid when the section has no such key.
    QVariant value(QLatin1String section, QLatin1String key) const;
    void setValue(QLatin1String section, QLatin1String key, const QVariant &value);

    /// Reads the file anew.
    void load();
    void save();

private:
    JsonFile m_file;
    QVariantMap m_map;
    DelayedSave m_saving{[this] { save(); }};
};
