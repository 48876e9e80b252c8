// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

#include <memory>

namespace Ui {
class WebLoginDialog;
}

/// Tells why there is no login page to show.
class WebLoginDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit WebLoginDialog(QWidget *parent = nullptr);
    ~WebLoginDialog() override;

private slots:
    void on_btnOk_clicked();

private:
    std::unique_ptr<Ui::WebLoginDialog> m_form;
};
