// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Cut/mutivideocutdialog.h"

#include "MediaKits/FunctionPage/Framework/Editors/Cut/cropedit.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videofragmentitemwidget.h"
#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentpane.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"
#include "MediaKits/Player/csvideoplayer.h"

#include <QFileInfo>
#include <QPushButton>

MutiVideoCutDialog::MutiVideoCutDialog(QWidget *parent)
    : VideoCutEditor(tr("视频剪裁"), parent), m_pane(new FragmentPane(this))
{
    setObjectName(QStringLiteral("MutiVideoCutDialog"));
    setSidePane(m_pane, m_pane->addButton());
    confirmButton()->setObjectName(QStringLiteral("btnOk"));
    connect(m_pane->addButton(), &QPushButton::clicked, this,
            &MutiVideoCutDialog::on_btnFragmentAdd_clicked);
    connect(confirmButton(), &QPushButton::clicked, this, &MutiVideoCutDialog::on_btnOk_clicked);
}

QSharedPointer<VideoCutFragment> MutiVideoCutDialog::marked() const
{
    auto fragment = QSharedPointer<VideoCutFragment>::create();
    fragment->name = QFileInfo(player().fileName()).completeBaseName();
    fragment->timeRange = span().span(0);
    fragment->cropRect = crop().crop();
    return fragment;
}

// What was marked and not added yet counts only as long as there is nothing else to lose.
bool MutiVideoCutDialog::isChanged() const
{
    const auto now = marked();
    return !m_pane->isEmpty() || now->timeRange || now->cropRect;
}

void MutiVideoCutDialog::on_btnFragmentAdd_clicked()
{
    m_pane->append<VideoFragmentItemWidget>(marked());
}

void MutiVideoCutDialog::on_btnOk_clicked()
{
    m_fragments = m_pane->fragments<VideoCutFragment>();
    accept();
}
