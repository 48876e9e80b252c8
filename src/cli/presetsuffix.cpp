// SPDX-License-Identifier: MIT
#include "cli/presetsuffix.h"

#include "catalogue/encparamcatalog.h"

#include <QHash>

QString presetCategory(const EncParam &preset)
{
    const auto category = EncParamCatalog::instance().category(preset.displayCategoryID);
    return category ? category->title : QString();
}

QString presetSuffix(const EncParam &preset)
{
    static const QHash<quint32, const char *> unlisted{
        {1007, "avi"}, {1008, "asf"}, {1009, "dv"},   {1014, "avi"},  {1017, "mxf"},
        {1018, "ts"},  {1019, "trp"}, {1020, "mpg"},  {1024, "gif"},  {1027, "mp4"},
        {1028, "mkv"}, {1050, "png"}, {1055, "m2ts"}, {2008, "aiff"}, {2009, "m4b"},
        {2011, "au"},  {2013, "mka"}, {3001, "mp4"},  {3002, "mp4"},
    };
    const QString title = presetCategory(preset);
    return title.isEmpty() ? QLatin1String(unlisted.value(preset.displayCategoryID, "mp4"))
                           : title.toLower();
}
