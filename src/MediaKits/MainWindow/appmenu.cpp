// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/appmenu.h"

#include "browser/userinfomanager.h"
#include "MediaKits/MainWindow/aboutmedialog.h"
#include "MediaKits/MainWindow/feedbackdialog.h"
#include "MediaKits/MainWindow/loginentry.h"
#include "MediaKits/MainWindow/mainwindow.h"
#include "MediaKits/MainWindow/updatecheck.h"
#include "ui_appmenu.h"

AppMenu::AppMenu(MainWindow *window, const ProductContact &contact)
    : PopupWindow(window), m_ui(std::make_unique<Ui::AppMenu>()), m_window(window)
{
    m_ui->setupUi(this);
    m_ui->btnRegister->setVisible(!UserInfoManager::instance().isLoggedIn());
    m_ui->btnToCService->setVisible(contact.hasService());
    fitContent();
}

AppMenu::~AppMenu() = default;

// Hidden at once, since the object lives until the dialog that a row opens has closed.
void AppMenu::leave()
{
    deleteLater();
    hide();
}

void AppMenu::on_btnRegister_clicked()
{
    leave();
    runLogin(m_window);
}

void AppMenu::on_btnAboutMe_clicked()
{
    leave();
    AboutMeDialog(m_window).exec();
}

void AppMenu::on_btnToCService_clicked()
{
    leave();
    m_window->on_btnCService_clicked();
}

void AppMenu::on_btnUpdate_clicked()
{
    leave();
    checkForUpdate(m_window);
}

void AppMenu::on_btnFeedback_clicked()
{
    leave();
    FeedbackDialog(m_window).exec();
}
