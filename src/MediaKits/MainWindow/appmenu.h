// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MainWindow/popupwindow.h"
#include "MediaKits/MainWindow/productcontact.h"

#include <functional>
#include <memory>

namespace Ui {
class AppMenu;
}
class MainWindow;

/// The main window's drop-down menu. Deletes itself when it closes.
class AppMenu : public PopupWindow
{
    Q_OBJECT

public:
    explicit AppMenu(MainWindow *window, const ProductContact &contact = productContact());
    ~AppMenu() override;

private slots:
    void on_btnRegister_clicked();
    void on_btnAboutMe_clicked();
    void on_btnToCService_clicked();
    void on_btnUpdate_clicked();
    void on_btnFeedback_clicked();

private:
    void leaveFor(const std::function<void(MainWindow *)> &next);

    std::unique_ptr<Ui::AppMenu> m_ui;
    MainWindow *m_window;
};
