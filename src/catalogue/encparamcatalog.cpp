// SPDX-License-Identifier: MIT
#include "catalogue/encparamcatalog.h"

#include <QDomDocument>
#include <QFile>
#include <QTextStream>

// A static library's resources are linked only through this call, which must not stand in a
// namespace.
static void initCatalogueResource()
{
    Q_INIT_RESOURCE(catalogue);
}

namespace {

constexpr quint32 videoKind = 1;
constexpr quint32 mp4Category = 1001;

QString dataDirectory()
{
    initCatalogueResource();
    return QStringLiteral(":/data");
}

QDomElement readRoot(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    QDomDocument document;
    return document.setContent(stream.readAll()) ? document.documentElement() : QDomElement();
}

// The elements of that name at any depth that have the attribute which identifies them.
QVector<QDomElement> elements(const QDomElement &root, const QString &tag, const QString &idName)
{
    QVector<QDomElement> found;
    const QDomNodeList nodes = root.elementsByTagName(tag);
    for (int i = 0; i < nodes.size(); ++i) {
        const QDomElement element = nodes.at(i).toElement();
        if (element.hasAttribute(idName))
            found.append(element);
    }
    return found;
}

quint32 unsignedOf(const QDomElement &element, const QString &name)
{
    return element.attribute(name).toUInt();
}

// The number of an attribute that is written with its unit, as in "128 kbps".
QString withoutUnit(const QDomElement &element, const QString &name, const QString &unit)
{
    return element.attribute(name).remove(unit).trimmed();
}

QSharedPointer<VEncParam> readVideo(const QDomElement &element)
{
    if (element.isNull())
        return {};
    auto video = QSharedPointer<VEncParam>::create();
    video->fourCC = element.attribute(QStringLiteral("VideoFourCC"));
    const QStringList size =
        element.attribute(QStringLiteral("Resolution")).split(QLatin1Char('*'));
    if (size.size() == 2) {
        video->width = size[0].toInt();
        video->height = size[1].toInt();
    }
    video->bitrate =
        withoutUnit(element, QStringLiteral("defVideoBitrate"), QStringLiteral("kbps")).toInt();
    video->frameRate =
        withoutUnit(element, QStringLiteral("defFrameRate"), QStringLiteral("fps")).toDouble();
    return video;
}

QSharedPointer<AEncParam> readAudio(const QDomElement &element)
{
    if (element.isNull())
        return {};
    auto audio = QSharedPointer<AEncParam>::create();
    audio->fourCC = element.attribute(QStringLiteral("AudioFourCC"));
    audio->channel = element.attribute(QStringLiteral("Channel")).toInt();
    audio->sampleRate =
        withoutUnit(element, QStringLiteral("defSampleRate"), QStringLiteral("Hz")).toInt();
    audio->bitrate =
        withoutUnit(element, QStringLiteral("defAudioBitrate"), QStringLiteral("kbps")).toInt();
    return audio;
}

} // namespace

EncParamCatalog::EncParamCatalog(const QString &directory)
{
    qRegisterMetaType<QSharedPointer<EncParam>>("QSharedPointer<EncParam>");
    qRegisterMetaType<QSharedPointer<VADisplayCategory>>("QSharedPointer<VADisplayCategory>");
    readCategories(readRoot(directory + QStringLiteral("/DisplayCategory.xml")));
    readEncParams(readRoot(directory + QStringLiteral("/EncodeParamInfos.xml")));
    readEncoders(readRoot(directory + QStringLiteral("/FFEncode.xml")));
}

const EncParamCatalog &EncParamCatalog::instance()
{
    static const EncParamCatalog catalogue(dataDirectory());
    return catalogue;
}

void EncParamCatalog::readCategories(const QDomElement &root)
{
    const QString idName = QStringLiteral("id");
    for (const QDomElement &element : elements(root, QStringLiteral("displaycategory"), idName)) {
        auto category = QSharedPointer<VADisplayCategory>::create();
        category->id = unsignedOf(element, idName);
        category->title = element.attribute(QStringLiteral("title"));
        category->type = element.attribute(QStringLiteral("type")).toInt();
        category->icon = element.attribute(QStringLiteral("icon"));
        m_categories.insert(category->id, category);
        m_categoryIds.append(category->id);
    }
}

void EncParamCatalog::readEncParams(const QDomElement &root)
{
    const QString idName = QStringLiteral("ID");
    for (const QDomElement &element : elements(root, QStringLiteral("EncParamInfo"), idName)) {
        auto param = QSharedPointer<EncParam>::create();
        param->id = unsignedOf(element, idName);
        param->name = element.firstChildElement(QStringLiteral("Name")).text();
        param->displayCategoryID = unsignedOf(element, QStringLiteral("DisplayCategoryID"));
        param->formatID = unsignedOf(element, QStringLiteral("FormatID"));
        param->video = readVideo(element.firstChildElement(QStringLiteral("VEncParam")));
        param->audio = readAudio(element.firstChildElement(QStringLiteral("AEncParam")));
        m_encParams.insert(param->id, param);
        m_encParamIds.append(param->id);
        if (!param->video && !param->audio)
            m_keepSourceIds.insert(param->id);
    }
}

void EncParamCatalog::readEncoders(const QDomElement &root)
{
    const QString idName = QStringLiteral("name");
    for (const QDomElement &element : elements(root, QStringLiteral("Encode"), idName))
        m_encoders.insert(element.attribute(idName), element.attribute(QStringLiteral("enc")));
}

QSharedPointer<EncParam> EncParamCatalog::encParam(quint32 id) const
{
    return m_encParams.value(id);
}

QSharedPointer<VADisplayCategory> EncParamCatalog::category(quint32 id) const
{
    return m_categories.value(id);
}

bool EncParamCatalog::hasEncParam(quint32 id) const
{
    return m_encParams.contains(id);
}

bool EncParamCatalog::isKeepSource(quint32 id) const
{
    return m_keepSourceIds.contains(id);
}

QString EncParamCatalog::titleOf(const EncParam &preset) const
{
    const auto listed = category(preset.displayCategoryID);
    return listed ? listed->title : QString();
}

QString EncParamCatalog::labelOf(const EncParam &preset) const
{
    const QString title = titleOf(preset);
    return title.isEmpty() ? preset.name : title + QLatin1Char(' ') + preset.name;
}

QString EncParamCatalog::suffixOf(const EncParam &preset) const
{
    static const QHash<quint32, const char *> unlisted{
        {1007, "avi"}, {1008, "asf"}, {1009, "dv"},   {1014, "avi"},  {1017, "mxf"},
        {1018, "ts"},  {1019, "trp"}, {1020, "mpg"},  {1024, "gif"},  {1027, "mp4"},
        {1028, "mkv"}, {1050, "png"}, {1055, "m2ts"}, {2008, "aiff"}, {2009, "m4b"},
        {2011, "au"},  {2013, "mka"}, {3001, "mp4"},  {3002, "mp4"},
    };
    const QString title = titleOf(preset);
    return title.isEmpty() ? QLatin1String(unlisted.value(preset.displayCategoryID, "mp4"))
                           : title.toLower();
}

QString EncParamCatalog::encoderOf(const QString &fourCC) const
{
    return m_encoders.value(fourCC);
}

quint32 EncParamCatalog::kindOf(quint32 encParamId) const
{
    const auto param = encParam(encParamId);
    return param ? categoryKind(param->displayCategoryID) : videoKind;
}

quint32 EncParamCatalog::categoryOf(quint32 encParamId) const
{
    const auto param = encParam(encParamId);
    return param ? param->displayCategoryID : mp4Category;
}

quint32 EncParamCatalog::firstCategoryOfKind(quint32 kind) const
{
    for (const quint32 id : m_categoryIds) {
        if (categoryKind(id) == kind)
            return id;
    }
    return 0;
}

QSharedPointer<EncParam> EncParamCatalog::cloneAsCustom(quint32 id) const
{
    const auto param = encParam(id);
    if (!param)
        return {};
    auto clone = QSharedPointer<EncParam>::create(*param);
    clone->id = customId;
    if (param->video)
        clone->video = QSharedPointer<VEncParam>::create(*param->video);
    if (param->audio)
        clone->audio = QSharedPointer<AEncParam>::create(*param->audio);
    return clone;
}
