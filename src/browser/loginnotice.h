// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

#include <memory>

namespace Ui {
class LoginNotice;
}

/// Why there is no login page.
struct LoginProblem
{
    enum Kind {
        None,
        NoService, ///< no address of a service is set
        NoAnswer,  ///< the service hasn't told the page's address
        NoView,    ///< the library of the web view doesn't work
        NoPage,    ///< the page can't be loaded
    };

    Kind kind = None;
    QString detail = {};
};

/// Tells the user of a problem. It is accepted when he wants to try again.
class LoginNotice : public DialogFrame
{
    Q_OBJECT

public:
    explicit LoginNotice(const LoginProblem &problem, QWidget *parent = nullptr);
    ~LoginNotice() override;

private slots:
    void on_btnOk_clicked();
    void on_btnRetry_clicked();

private:
    std::unique_ptr<Ui::LoginNotice> m_form;
};
