// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QLabel;
class QSpinBox;

/// What an editor of moments has below the fields of a series' start and end: the interval, and how
/// many pictures the series gives.
class ShotIntervalEdit : public QWidget
{
    Q_OBJECT

public:
    explicit ShotIntervalEdit(QWidget *parent = nullptr);

    int intervalMs() const;
    void showCount(int pictures);

signals:
    void changed();

private:
    QSpinBox *m_interval;
    QLabel *m_count;
};
