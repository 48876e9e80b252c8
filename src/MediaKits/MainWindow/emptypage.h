// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// Stands in for a page that isn't built yet: its picture and name, and that it is to come. Makes
/// its content when it is shown for the first time.
class EmptyPage : public QWidget
{
    Q_OBJECT

public:
    /// @param icon path of the picture, without suffix
    EmptyPage(const QString &icon, const QString &label, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void build();

    const QString m_icon;
    const QString m_label;
};
