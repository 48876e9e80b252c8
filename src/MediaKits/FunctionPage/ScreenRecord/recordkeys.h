// SPDX-License-Identifier: MIT
#pragma once

#include "platform/globalkeys.h"

#include <QStringList>

/// The keys by which a recording is controlled from everywhere, as long as this object lives.
class RecordKeys : public QObject
{
    Q_OBJECT

public:
    explicit RecordKeys(QObject *parent = nullptr);

    /// What the user may press; empty when there is nothing.
    QString hint() const;
    /// That another program has keys; empty when none.
    QString remark() const;

signals:
    /// Starts or ends a recording.
    void startStopPressed();
    void pausePressed();

private:
    GlobalKeys m_keys;
    QStringList m_held;  // with their meaning
    QStringList m_taken; // by another program
};
