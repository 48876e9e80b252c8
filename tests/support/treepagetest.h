// SPDX-License-Identifier: MIT
#pragma once

#include "support/pagetest.h"

#include <QTreeWidget>

/// A page with a tree of sources and fragments, driven by its buttons.
template<class Page>
class TreePageTest : public PageTest<Page>
{
public:
    using PageTest<Page>::PageTest;

    QTreeWidget *tree() const { return child<QTreeWidget>(*this->page, "convertTree"); }
    QTreeWidgetItem *source(int index) const { return tree()->topLevelItem(index); }
    QWidget *sourceRow(int index) const { return tree()->itemWidget(source(index), 0); }
    TaskRowWidget *fragment(int index, int part) const
    {
        return qobject_cast<TaskRowWidget *>(tree()->itemWidget(source(index)->child(part), 0));
    }
    ConvertTaskParam &param(int index, int part) const
    {
        return *static_cast<ConvertTaskParam *>(fragment(index, part)->task()->param());
    }
    MediaTask::State state(int index, int part) const
    {
        return fragment(index, part)->task()->state();
    }
    QString convert(int index, int part) const { return this->converted(*fragment(index, part)); }
    QString text(int index, int part, const char *label) const
    {
        return child<QLabel>(*fragment(index, part), label)->text();
    }
    QString hint(int index) const { return child<QLabel>(*sourceRow(index), "lblHint")->toolTip(); }

    void addSources(const QStringList &files)
    {
        const int before = tree() ? tree()->topLevelItemCount() : 0;
        this->add(files);
        QTRY_COMPARE(tree()->topLevelItemCount(), before + files.size());
        for (int i = before; i < tree()->topLevelItemCount(); ++i)
            QTRY_VERIFY(child(*sourceRow(i), "btnAddItem")->isEnabled());
    }

    /// Opens a source's editor by its button, and gives it to `act`, which has to end it.
    template<class Act>
    void edit(int index, const char *editor, Act act)
    {
        bool opened = false;
        whenModal(editor, [&](QWidget &dialog) {
            opened = true;
            act(dialog);
        });
        press(*sourceRow(index), "btnAddItem");
        QVERIFY(opened);
    }
};
