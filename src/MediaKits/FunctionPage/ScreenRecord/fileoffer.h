// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QWidget>

class ElidedLabel;

/// A strip that tells of recordings and offers to play them or to show them in their folder, until
/// the user has had enough. Hidden while there are none.
class FileOffer : public QWidget
{
    Q_OBJECT

public:
    explicit FileOffer(QWidget *parent = nullptr);

    /// @param files paths; none hides the strip
    void offer(const QString &text, const QStringList &files);

private:
    void play() const;

    ElidedLabel *m_text;
    QStringList m_files;
};
