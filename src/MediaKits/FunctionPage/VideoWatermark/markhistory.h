// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantList>
#include <QVector>

#include <optional>

/// The last ten states of a list of marks, for going back.
class MarkHistory
{
public:
    /// What it begins with.
    void reset(const QVariantList &marks);
    /// Takes what a step has made of the marks; nothing when it has changed nothing.
    /// @param step steps of one name, one behind the other, are one; an empty name is never
    /// another's
    void note(const QVariantList &marks, const QString &step = {});
    /// The state from before the last step.
    std::optional<QVariantList> back();

private:
    QVector<QVariantList> m_states; // the oldest first, without the present one
    QVariantList m_present;
    QString m_step;
};
