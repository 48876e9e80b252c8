// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QListWidgetItem;

/// A category's icon and title, in the format dialog's list of categories.
class CategoryItemWidget : public QWidget
{
    Q_OBJECT

public:
    /// Reads the records of `item`, which must be set, once.
    explicit CategoryItemWidget(const QListWidgetItem &item, QWidget *parent = nullptr);
};
