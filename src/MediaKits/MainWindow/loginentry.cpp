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
    const QPointer<WebLoginDialog> dialog = new WebLoginDialog(parent);
    dialog->exec();
    if (!dialog)
        return {};
    const LoginProblem met = dialog->problem();
    delete dialog.data();
    return met;
}

} // namespace

void runLogin(QWidget *parent)
{
    if (open)
        return;
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
