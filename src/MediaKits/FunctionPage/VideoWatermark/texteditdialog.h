// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

#include <QColor>

#include <memory>

namespace Ui {
class TextEditDialog;
}

/// A text with its face, its size in picture pixels and its colour.
class TextEditDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit TextEditDialog(QWidget *parent = nullptr);
    ~TextEditDialog() override;

    QString text() const;
    void setText(const QString &text);
    /// Family and pixel size.
    QFont textFont() const;
    void setTextFont(const QFont &font);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);

private slots:
    void on_WBtnColor_clicked();
    void on_btnReset_clicked();
    void on_btnOK_clicked();
    void on_btnCancel_clicked();

private:
    void setUpKeys();
    void setFamily(const QString &family);
    void showSample();

    const std::unique_ptr<Ui::TextEditDialog> m_ui;
    QColor m_color;
};
