// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QListWidgetItem;

/// A preset's icon, name and detail, in the format dialog's list of presets.
class EncParamInfoItemWidget : public QWidget
{
    Q_OBJECT

public:
    /// Reads the records of `item`, which must be set, once.
    explicit EncParamInfoItemWidget(const QListWidgetItem &item, QWidget *parent = nullptr);
};
