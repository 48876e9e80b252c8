// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

#include <memory>

namespace Ui {
class FeedbackDialog;
}
class QPushButton;

/// Takes a complaint or a suggestion. Nothing of it is stored or sent.
class FeedbackDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit FeedbackDialog(QWidget *parent = nullptr);
    ~FeedbackDialog() override;

private slots:
    void on_plainTextEdit_textChanged();
    void on_btnImage1_clicked();
    void on_btnImage2_clicked();
    void on_btnImage3_clicked();
    void on_btnSubmit_clicked();

private:
    void cutSurplus(int surplus);
    void chooseImage(QPushButton *button);

    std::unique_ptr<Ui::FeedbackDialog> m_ui;
};
