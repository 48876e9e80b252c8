// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class FunctionPage;
}
class QButtonGroup;
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

    /// Whether a page has something at work or waiting for its turn.
    bool isWorking() const;

signals:
    void goToHome();

private:
    void addPages();
    void connectNavigation();
    void changePage(int index);
    void yieldRoom(int current);
    void jumpFromHome(int index);

    std::unique_ptr<Ui::FunctionPage> m_ui;
    QButtonGroup *m_buttons;
};
