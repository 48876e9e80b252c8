// SPDX-License-Identifier: MIT
#include "platform/fontfile.h"

#include <QFile>
#include <QHash>

#include <memory>

#include <fontconfig/fontconfig.h>

namespace {
struct PatternDeleter
{
    void operator()(FcPattern *pattern) const { FcPatternDestroy(pattern); }
};
using PatternPointer = std::unique_ptr<FcPattern, PatternDeleter>;

// @param language that the font should know, as "zh-cn"; null for any
PatternPointer bestMatch(const QByteArray &family, const char *language = nullptr)
{
    const PatternPointer wanted(FcPatternCreate());
    if (!wanted)
        return nullptr;
    FcPatternAddString(wanted.get(), FC_FAMILY,
                       reinterpret_cast<const FcChar8 *>(family.constData()));
    if (language)
        FcPatternAddString(wanted.get(), FC_LANG, reinterpret_cast<const FcChar8 *>(language));
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    return PatternPointer(FcFontMatch(nullptr, wanted.get(), &result));
}

// fontconfig always finds some font; only the names tell whether it is the one that was meant.
bool hasFamily(const FcPattern *font, const QString &family)
{
    FcChar8 *name = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_FAMILY, i, &name) == FcResultMatch; ++i) {
        const QString found = QString::fromUtf8(reinterpret_cast<const char *>(name));
        if (found.compare(family, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

QString findNearest(const QString &family)
{
    const QByteArray name = family.toUtf8();
    const PatternPointer exact = bestMatch(name);
    if (exact && hasFamily(exact.get(), family))
        return family;
    const PatternPointer font = bestMatch(name, "zh-cn");
    FcChar8 *found = nullptr;
    if (!font || FcPatternGetString(font.get(), FC_FAMILY, 0, &found) != FcResultMatch)
        return family;
    return QString::fromUtf8(reinterpret_cast<const char *>(found));
}
} // namespace

QString nearestFontFamily(const QString &family)
{
    static QHash<QString, QString> known;
    const auto place = known.constFind(family);
    return place != known.constEnd() ? *place : *known.insert(family, findNearest(family));
}

QString fontFileOfFamily(const QString &family)
{
    if (family.isEmpty())
        return {};
    const PatternPointer font = bestMatch(family.toUtf8());
    FcChar8 *file = nullptr;
    if (!font || !hasFamily(font.get(), family) ||
        FcPatternGetString(font.get(), FC_FILE, 0, &file) != FcResultMatch)
        return {};
    return QFile::decodeName(reinterpret_cast<const char *>(file));
}
