// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Intake/fileaddtype.h"
#include "MediaKits/FunctionPage/Framework/Page/lazypage.h"
#include "MediaKits/FunctionPage/Framework/Rows/taskrowsview.h"

#include <memory>

namespace Ui {
class ListPage;
}

/// Base of the pages that hold a list or a tree of rows: intake of files, output folder, and the
/// button that starts everything.
class ListPage : public LazyPage
{
    Q_OBJECT

public:
    /// What tells one page from another.
    struct Kind
    {
        MediaFunction function;
        /// Classes of suffixes that its dialogs offer: a sum of `FormatClass`.
        int formatClasses;
        /// Suffixes of what may be dropped.
        const QStringList &(*dropSuffixes)();
        /// Makes the list or the tree: `createRowsView` of its class.
        RowsView *(*createRows)(QWidget *parent);
        /// The class that its dialogs show at first; 0 for the first of those that they offer.
        int firstClass = 0;
    };

    ListPage(const Kind &kind, QWidget *parent);
    ~ListPage() override;

    void addFiles(const QStringList &files);
    void clear();
    bool isWorking() const override;

public slots:
    virtual void on_btnConvertAll_clicked();

protected:
    template<class Rows>
    static RowsView *createRowsView(QWidget *parent)
    {
        return new Rows(parent);
    }

    /// Fills the left of the bottom bar and reads the page's own settings.
    virtual void setUpChoices(QWidget *choices) = 0;

    /// Gives the choices a row of their own, above the bottom bar; for `setUpChoices`.
    void raiseChoices();
    /// Gives the button that starts everything a name and texts of its own; for `setUpChoices`.
    void nameStart(const QString &objectName, const QString &idleText, const QString &busyText);
    QVariant setting(QLatin1String key) const;
    void storeSetting(QLatin1String key, const QVariant &value);
    /// Once built.
    RowsView &rows() const { return *m_rows; }
    void build() override;

private:
    void setUpIntake();
    QString dialogFilter() const;
    void receiveFiles(const QStringList &files, FileAddType type);
    void askAndClear();
    void showGroupState(RowsView::TaskGrpState state);

    const Kind m_kind;
    std::unique_ptr<Ui::ListPage> m_ui;
    RowsView *m_rows = nullptr;
};
