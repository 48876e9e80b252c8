// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MainWindow/popupwindow.h"
#include "MediaKits/MainWindow/productcontact.h"

#include <memory>

namespace Ui {
class CustomerService;
}

/// The popup with the ways to reach the customer service. Deletes itself when it closes.
class CustomerService : public PopupWindow
{
    Q_OBJECT

public:
    explicit CustomerService(QWidget *parent, const ProductContact &contact = productContact());
    ~CustomerService() override;

private slots:
    void on_wbnQQ_clicked();

private:
    std::unique_ptr<Ui::CustomerService> m_ui;
    const ProductContact m_contact;
};
