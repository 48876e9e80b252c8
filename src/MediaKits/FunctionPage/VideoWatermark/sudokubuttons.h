// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// Nine buttons, three by three, for the places that something can be moved to.
class SudokuButtons : public QWidget
{
    Q_OBJECT

public:
    explicit SudokuButtons(QWidget *parent = nullptr);

signals:
    /// @param place 0 to 8, row by row from the upper left
    void placeClicked(int place);
};
