// SPDX-License-Identifier: MIT
#include "browser/loginnotice.h"

#include "ui_loginnotice.h"

LoginNotice::LoginNotice(const LoginProblem &problem, QWidget *parent)
    : DialogFrame(parent), m_form(std::make_unique<Ui::LoginNotice>())
{
    setUpForm(*m_form);
    setTitle(tr("登录"));
    const QString free = tr("所有功能无需登录即可使用。");
    QString reason;
    QString hint;
    switch (problem.kind) {
    case LoginProblem::None:
        break;
    case LoginProblem::NoService:
        reason = tr("尚未设置登录服务");
        hint = free + tr("要使用登录，请在程序所在文件夹的 main.ini 中，于 [Service] 一节填写 "
                         "configuration 和 user 两项服务地址，然后重新启动程序。");
        break;
    case LoginProblem::NoAnswer:
        reason = tr("登录服务没有响应");
        hint = tr("请检查网络连接，稍后重新启动程序再试。") + free;
        break;
    case LoginProblem::NoView:
        reason = tr("登录页面的组件无法启动");
        hint = tr("原因已写入日志，重新安装程序或许能解决。") + free;
        break;
    case LoginProblem::NoPage:
        reason = tr("登录页面打不开");
        hint = problem.detail.isEmpty() ? tr("请检查网络连接，稍后再试。") + free
                                        : problem.detail + tr("。") + free;
        break;
    }
    m_form->lblReason->setText(reason);
    m_form->lblHint->setText(hint);
    m_form->btnRetry->setVisible(problem.kind == LoginProblem::NoPage);
    (problem.kind == LoginProblem::NoPage ? m_form->btnRetry : m_form->btnOk)->setDefault(true);
}

LoginNotice::~LoginNotice() = default;

void LoginNotice::on_btnOk_clicked()
{
    reject();
}

void LoginNotice::on_btnRetry_clicked()
{
    accept();
}
