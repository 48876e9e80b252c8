// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"
#include "MediaKits/MainWindow/productcontact.h"

#include <memory>

namespace Ui {
class AboutMeDialog;
}

/// Name, version and web site of the program.
class AboutMeDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit AboutMeDialog(QWidget *parent = nullptr,
                           const ProductContact &contact = productContact());
    ~AboutMeDialog() override;

private slots:
    void on_btnOfficalWeb_clicked();

private:
    std::unique_ptr<Ui::AboutMeDialog> m_ui;
    const QUrl m_webSite;
};
