// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocuteditor.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocutfragment.h"

#include <QList>

class FragmentPane;

/// Marks any number of fragments of one video, each to become a file of its own.
class MutiVideoCutDialog : public VideoCutEditor
{
    Q_OBJECT

public:
    explicit MutiVideoCutDialog(QWidget *parent = nullptr);

    /// The result, once the dialog was accepted, in the order of the list.
    QList<QSharedPointer<VideoCutFragment>> fragments() const { return m_fragments; }

protected:
    bool isChanged() const override;

private slots:
    void on_btnFragmentAdd_clicked();
    void on_btnOk_clicked();

private:
    QSharedPointer<VideoCutFragment> marked() const;

    FragmentPane *m_pane;
    QList<QSharedPointer<VideoCutFragment>> m_fragments;
};
