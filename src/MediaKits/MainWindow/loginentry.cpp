// SPDX-License-Identifier: MIT
#include "MediaKits/MainWindow/loginentry.h"

#include "browser/weblogindialog.h"
#include "MediaKits/DataTracker/oskdatatracker.h"

namespace {

constexpr int loginClickEvent = 8;

bool open = false;

} // namespace

void runLogin(QWidget *parent)
{
    if (open)
        return;
    open = true;
    OskDataTracker::instance().trackTableEvent(loginClickEvent);
    WebLoginDialog(parent).exec();
    open = false;
}
