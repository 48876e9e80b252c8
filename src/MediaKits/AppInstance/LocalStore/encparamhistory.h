// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/delayedsave.h"
#include "MediaKits/AppInstance/LocalStore/jsonfile.h"

#include <QList>

/// The presets used last, in EncParamData.json: read by the constructor, written soon
/// after a change and by the destructor.
class EncParamHistory
{
public:
    static constexpr int maxIds = 10;

    EncParamHistory();
    ~EncParamHistory();
    Q_DISABLE_COPY(EncParamHistory)

    static EncParamHistory &instance();

    /// Preset ids, most recent first, at most maxIds. The catalogue may lack some of them.
    const QList<quint32> &ids() const { return m_ids; }
    /// Puts the id in front.
    void touch(quint32 id);
    void remove(quint32 id);

    /// Reads the file anew.
    void load();
    void save();

private:
    QJsonObject content() const;

    JsonFile m_file;
    QList<quint32> m_ids;
    DelayedSave m_saving{[this] { save(); }};
};
