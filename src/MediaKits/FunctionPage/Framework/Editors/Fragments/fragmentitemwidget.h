// SPDX-License-Identifier: MIT
#pragma once

#include <QSharedPointer>
#include <QWidget>

#include <memory>

class QListWidgetItem;
struct CutFragment;

namespace Ui {
class FragmentItemWidget;
}

/// Base of the rows of a fragment list.
class FragmentItemWidget : public QWidget
{
    Q_OBJECT

public:
    ~FragmentItemWidget() override;

protected:
    /// Adds the fragment's time to its name, so that the fragments of one file are told apart.
    /// @param item goes when the user deletes the row
    /// @param size of the fragment's picture; empty for that of the whole
    FragmentItemWidget(QListWidgetItem *item, const QSharedPointer<CutFragment> &fragment,
                       const QString &size, QWidget *parent);

    void resizeEvent(QResizeEvent *event) override;

private slots:
    void on_btnDel_clicked();

private:
    void showSpan();
    void rename(const QString &typed);
    void endNaming();

    const std::unique_ptr<Ui::FragmentItemWidget> m_ui;
    QListWidgetItem *const m_item;
    const QSharedPointer<CutFragment> m_fragment;
    QString m_name; // from before the edit was opened
};
