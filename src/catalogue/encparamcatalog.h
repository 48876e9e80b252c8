// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/encparam.h"

#include <QHash>
#include <QList>
#include <QSet>

class QDomElement;

/// The fixed vocabulary of output formats: categories, their presets, and the encoder names of
/// the codec labels. Read once, never changed afterwards.
class EncParamCatalog
{
public:
    /// MP4, as the source.
    static constexpr quint32 defaultKeepSourceId = 1003001;
    /// MP4, HD 1080P.
    static constexpr quint32 defaultHdId = 1003002;
    /// MP3, as the source.
    static constexpr quint32 defaultAudioId = 1200000;
    /// GIF, 240*160.
    static constexpr quint32 defaultGifId = 2501002;
    /// Id of every clone; no preset of the catalogue has it.
    static constexpr quint32 customId = 9000000;

    /// Reads DisplayCategory.xml, EncodeParamInfos.xml and FFEncode.xml. A file that is missing
    /// or can't be parsed leaves its collection empty.
    /// @param directory folder of the three files
    explicit EncParamCatalog(const QString &directory);
    Q_DISABLE_COPY(EncParamCatalog)

    /// The catalogue of the program, made from its resources on first use.
    static const EncParamCatalog &instance();

    /// The shared preset, null when the id is unknown. It must not be changed: see cloneAsCustom.
    QSharedPointer<EncParam> encParam(quint32 id) const;
    /// Null when the id is unknown.
    QSharedPointer<VADisplayCategory> category(quint32 id) const;
    bool hasEncParam(quint32 id) const;

    /// All preset ids, in document order.
    const QList<quint32> &encParamIds() const { return m_encParamIds; }
    /// All category ids, in document order.
    const QList<quint32> &categoryIds() const { return m_categoryIds; }

    /// Whether the preset has neither a video nor an audio record.
    bool isKeepSource(quint32 id) const;

    /// Title of the preset's category; empty for one that the catalogue doesn't list, as GIF.
    QString titleOf(const EncParam &preset) const;
    /// What names the preset to a user: the category's title, where it has one, and its own name.
    QString labelOf(const EncParam &preset) const;
    /// Suffix of the preset's results, in lower case.
    QString suffixOf(const EncParam &preset) const;

    /// Encoder name of a codec label, compared exactly; empty when the label is unknown.
    QString encoderOf(const QString &fourCC) const;

    static quint32 categoryKind(quint32 categoryId) { return categoryId / 1000; }
    /// Kind of the preset's category; video for an unknown id.
    quint32 kindOf(quint32 encParamId) const;
    /// Category of the preset; MP4 for an unknown id.
    quint32 categoryOf(quint32 encParamId) const;
    /// 0 when no category is of that kind.
    quint32 firstCategoryOfKind(quint32 kind) const;

    /// A deep copy of the preset under the id `customId`, for the caller to change at will; null
    /// when the id is unknown.
    QSharedPointer<EncParam> cloneAsCustom(quint32 id) const;

private:
    void readCategories(const QDomElement &root);
    void readEncParams(const QDomElement &root);
    void readEncoders(const QDomElement &root);

    QHash<quint32, QSharedPointer<EncParam>> m_encParams;
    QList<quint32> m_encParamIds;
    QHash<quint32, QSharedPointer<VADisplayCategory>> m_categories;
    QList<quint32> m_categoryIds;
    QHash<QString, QString> m_encoders;
    QSet<quint32> m_keepSourceIds;
};
