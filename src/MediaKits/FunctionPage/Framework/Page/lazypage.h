// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// Base of the function pages: nothing of one is built before it is first shown or needed, so that
/// the program starts at once although all pages exist.
class LazyPage : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Whether something is at work or waits for its turn, which leaving would end.
    virtual bool isWorking() const = 0;
    /// Asks the user of a page that is at work whether to leave the program.
    virtual QString leaveQuestion() const;
    /// Called when the user leaves all the same. A page whose work is worth keeping returns when
    /// that is done.
    virtual void finishWork() {}

protected:
    void ensureBuilt();
    /// Makes the page's widgets; once.
    virtual void build() = 0;

    void showEvent(QShowEvent *event) override;

private:
    bool m_isBuilt = false;
};
