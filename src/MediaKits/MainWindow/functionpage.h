// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class FunctionPage;
}
class LazyPage;
class QButtonGroup;
class ScreencapFuncionPage;
class WidgetButton;
struct FunctionPageEntry;

/// The shell: the side bar of the functions beside the stack of their pages, which are all made
/// here and live as long as it.
class FunctionPage : public QWidget
{
    Q_OBJECT

public:
    explicit FunctionPage(QWidget *parent = nullptr);
    ~FunctionPage() override;

    /// The question before the program ends what a page has at work or waiting for its turn;
    /// empty when none has.
    QString leaveQuestion() const;
    /// Returns when the pages have done what is worth keeping.
    void finishWork();
    /// Goes to a page as from the home page.
    void jumpTo(int index);
    ScreencapFuncionPage *recordPage() const;

signals:
    void goToHome();

private:
    void addPages();
    void connectNavigation();
    void changePage(int index);
    void yieldRoom(int current);
    QVector<LazyPage *> workingPages() const;

    std::unique_ptr<Ui::FunctionPage> m_ui;
    QButtonGroup *m_buttons;
};
