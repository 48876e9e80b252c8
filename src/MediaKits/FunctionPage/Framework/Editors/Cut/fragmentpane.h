// SPDX-License-Identifier: MIT
#pragma once

#include <QListWidget>
#include <QSharedPointer>
#include <QWidget>

#include <memory>

class QPushButton;

namespace Ui {
class FragmentPane;
}

/// Data of the items of a fragment list: the shared pointer to the fragment.
constexpr int fragmentRole = Qt::UserRole + 2;

/// The list of the fragments that were marked in an editor, each with a row of its own, and the
/// button that adds to it. Nothing in the list refers back to the editor's controls.
class FragmentPane : public QWidget
{
    Q_OBJECT

public:
    explicit FragmentPane(QWidget *parent = nullptr);
    ~FragmentPane() override;

    /// "btnFragmentAdd", for the editor to place.
    QPushButton *addButton() const { return m_addButton; }
    bool isEmpty() const;

    /// Appends a fragment.
    /// @tparam Row made from the item and a parent
    template<class Row, class Fragment>
    void append(const QSharedPointer<Fragment> &fragment)
    {
        auto *item = new QListWidgetItem;
        item->setData(fragmentRole, QVariant::fromValue(fragment));
        list()->addItem(item);
        showRow(item, new Row(item, list()));
    }

    /// In the order of the list.
    template<class Fragment>
    QList<QSharedPointer<Fragment>> fragments() const
    {
        QList<QSharedPointer<Fragment>> found;
        for (int i = 0; i < list()->count(); ++i)
            found += list()->item(i)->data(fragmentRole).template value<QSharedPointer<Fragment>>();
        return found;
    }

private:
    QListWidget *list() const;
    void showRow(QListWidgetItem *item, QWidget *row);
    void showCount();

    const std::unique_ptr<Ui::FragmentPane> m_ui;
    QPushButton *m_addButton;
};
