// SPDX-License-Identifier: MIT
#include "browser/weblogindialog.h"

#include "MediaKits/AppInstance/LocalStore/appconfig.h"
#include "ui_weblogindialog.h"

WebLoginDialog::WebLoginDialog(QWidget *parent)
    : DialogFrame(parent), m_form(std::make_unique<Ui::WebLoginDialog>())
{
    setUpForm(*m_form);
    setTitle(tr("登录"));
    const AppConfig &ini = AppConfig::instance();
    if (ini.serviceConfiguration.isEmpty() || ini.serviceUser.isEmpty())
        return;
    m_form->lblReason->setText(tr("此版本还不能显示登录页面"));
    m_form->lblHint->setText(tr("所有功能无需登录即可使用。"));
}

WebLoginDialog::~WebLoginDialog() = default;

void WebLoginDialog::on_btnOk_clicked()
{
    accept();
}
