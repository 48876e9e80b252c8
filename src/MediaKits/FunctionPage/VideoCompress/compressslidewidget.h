// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class CompressSlideWidget;
}

/// A slider over a ruler that chooses by how many percent the size changes: -80 to 0.
class CompressSlideWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CompressSlideWidget(QWidget *parent = nullptr);
    ~CompressSlideWidget() override;

    int value() const;
    void setValue(int value);

signals:
    void valueChanged(int value);

private:
    const std::unique_ptr<Ui::CompressSlideWidget> m_ui;
};
