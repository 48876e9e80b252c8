// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class QTimeEdit;

namespace Ui {
class TimeSpanEdit;
}

/// The fields of a time span, each with a button that takes the preview's position.
class TimeSpanEdit : public QWidget
{
    Q_OBJECT

public:
    explicit TimeSpanEdit(QWidget *parent = nullptr);
    ~TimeSpanEdit() override;

    QTimeEdit *start() const;
    QTimeEdit *end() const;

signals:
    void startCaptured();
    void endCaptured();

private:
    const std::unique_ptr<Ui::TimeSpanEdit> m_ui;
};
