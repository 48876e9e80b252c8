// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QWidget>

class FileOffer;
class QLabel;

/// What the recording page has to say above its choices: what a recording would lack, which ones
/// were rescued after a crash, and which one was made last. Takes no room while there is nothing.
class RecordNotices : public QWidget
{
    Q_OBJECT

public:
    explicit RecordNotices(QWidget *parent = nullptr);

    /// @param lines one a hindrance; none for nothing
    void setRemarks(const QStringList &lines);
    /// @param files paths of recordings made of what a crash left
    void offerRescued(const QStringList &files);
    /// @param files of one recording
    /// @param remark what is to be known of it; may be empty
    void offerSaved(const QStringList &files, const QString &remark);

private:
    QLabel *m_remarks;
    FileOffer *m_rescued;
    FileOffer *m_saved;
};
