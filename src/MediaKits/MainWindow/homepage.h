// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class HomePage;
}

/// The first page: a card for each of nine functions.
class HomePage : public QWidget
{
    Q_OBJECT

public:
    explicit HomePage(QWidget *parent = nullptr);
    ~HomePage() override;

signals:
    /// @param index number of the function
    void goToFunction(int index);

private:
    std::unique_ptr<Ui::HomePage> m_ui;
};
