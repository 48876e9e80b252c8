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

/// The list of what was marked in an editor, each with a row of its own, and the button that adds
/// to it. Nothing in the list refers back to the editor's controls.
class FragmentPane : public QWidget
{
    Q_OBJECT

public:
    /// What tells the panes of the editors apart.
    struct Kind
    {
        /// Role of the items that holds the shared pointer to what was marked.
        int role = fragmentRole;
        int rowHeight = 96; ///< pixels
        /// Whether one of the rows is the current one, which the user chooses.
        bool hasCurrent = false;
        /// Object name of the button that empties the list; empty for none.
        QLatin1String clearButton;
    };

    explicit FragmentPane(QWidget *parent = nullptr) : FragmentPane(Kind(), parent) {}
    FragmentPane(const Kind &kind, QWidget *parent);
    ~FragmentPane() override;

    /// "btnFragmentAdd", for the editor to place.
    QPushButton *addButton() const { return m_addButton; }
    bool isEmpty() const;
    /// For what an editor does with the current row.
    QListWidget *list() const;
    void setTexts(const QString &title, const QString &empty);

    /// Appends a fragment.
    /// @tparam Row made from the item and a parent
    template<class Row, class Fragment>
    QListWidgetItem *append(const QSharedPointer<Fragment> &fragment)
    {
        auto *item = new QListWidgetItem;
        list()->addItem(item);
        setFragment<Row>(item, fragment);
        list()->scrollToItem(item);
        if (m_kind.hasCurrent)
            list()->setCurrentItem(item);
        return item;
    }

    /// Puts another fragment into an item, and makes its row anew.
    template<class Row, class Fragment>
    void setFragment(QListWidgetItem *item, const QSharedPointer<Fragment> &fragment)
    {
        item->setData(m_kind.role, QVariant::fromValue(fragment));
        showRow(item, new Row(item, list()));
    }

    /// In the order of the list.
    template<class Fragment>
    QList<QSharedPointer<Fragment>> fragments() const
    {
        QList<QSharedPointer<Fragment>> found;
        for (int i = 0; i < list()->count(); ++i)
            found += list()->item(i)->data(m_kind.role).template value<QSharedPointer<Fragment>>();
        return found;
    }

public slots:
    /// Deletes the items, which the list's model tells of as one removal.
    void clear();

private:
    void addClearButton();
    void showRow(QListWidgetItem *item, QWidget *row);
    void showCount();

    const Kind m_kind;
    const std::unique_ptr<Ui::FragmentPane> m_ui;
    QPushButton *m_addButton;
};
