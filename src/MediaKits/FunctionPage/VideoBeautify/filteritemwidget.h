// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class FilterItemWidget;
}

/// A ready-made look in the list of them: its picture above its name.
class FilterItemWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FilterItemWidget(QWidget *parent = nullptr);
    ~FilterItemWidget() override;

    void setChecked(bool checked);
    void setText(const QString &text);
    /// @param file of a picture; one that is missing leaves the place empty
    void setImage(const QString &file);

private:
    const std::unique_ptr<Ui::FilterItemWidget> m_ui;
};
