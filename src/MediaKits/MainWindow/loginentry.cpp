// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/loginentry.h"

#include "browser/webinterface.h"
#include "browser/weblogindialog.h"
#include "controls/runmodal.h"
#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "MediaKits/DataTracker/oskdatatracker.h"

namespace {

constexpr int loginClickEvent = 8;

bool open = false;
QPointer<WebLoginDialog> current;

// What keeps a login page from being shown at all: a window for it would only flash.
LoginProblem obstacle()
{
    const AppConfig &ini = AppConfig::instance();
    if (ini.serviceConfiguration.isEmpty() || ini.serviceUser.isEmpty())
        return {LoginProblem::NoService};
    if (WebInterface::instance().loginUrl().isEmpty())
        return {LoginProblem::NoAnswer};
    return {};
}

LoginProblem runDialog(QWidget *parent)
{
    const LoginProblem problem = obstacle();
    if (problem.kind != LoginProblem::None)
        return problem;
    current = new WebLoginDialog(parent);
    current->exec();
    const LoginProblem met = current ? current->problem() : LoginProblem();
    delete current.data();
    return met;
}

} // namespace

void runLogin(QWidget *parent)
{
    if (open) {
        // The page may have hidden it.
        if (current) {
            current->show();
            current->activateWindow();
        }
        return;
    }
    open = true;
    OskDataTracker::instance().trackTableEvent(loginClickEvent);
    const QPointer<QWidget> window = parent;
    LoginProblem problem;
    do
        problem = runDialog(parent);
    while (problem.kind != LoginProblem::None && window &&
           runModal(new LoginNotice(problem, parent)) && window);
    open = false;
}
