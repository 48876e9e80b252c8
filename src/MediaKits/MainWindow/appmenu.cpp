// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/appmenu.h"

#include "browser/userinfomanager.h"
#include "MediaKits/AppUpdater/appupdater.h"
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

// A dialog that ran while the press is still dealt with would leave Qt without knowing what the
// pointer lies on: what is entered after the dialog, as a card of the home page, is never left.
void AppMenu::leaveFor(const std::function<void(MainWindow *)> &next)
{
    close();
    const auto run = [window = m_window, next] { next(window); };
    QMetaObject::invokeMethod(m_window, run, Qt::QueuedConnection);
}

void AppMenu::on_btnRegister_clicked()
{
    leaveFor(runLogin);
}

void AppMenu::on_btnAboutMe_clicked()
{
    leaveFor([](MainWindow *window) { AboutMeDialog(window).exec(); });
}

void AppMenu::on_btnToCService_clicked()
{
    leaveFor(&MainWindow::on_btnCService_clicked);
}

void AppMenu::on_btnUpdate_clicked()
{
    leaveFor([](MainWindow *window) { checkForUpdate(window, AppUpdater::instance()); });
}

void AppMenu::on_btnFeedback_clicked()
{
    leaveFor([](MainWindow *window) { FeedbackDialog(window).exec(); });
}
