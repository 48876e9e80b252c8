// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

class QLabel;
class QTimeEdit;

namespace Ui {
class TimeSpanEdit;
}

/// The fields of a time span, each with a button that takes the preview's position. Each stands in
/// a row of its own, "wdtTimeStart" and "wdtTimeEnd", which an editor may hide.
class TimeSpanEdit : public QWidget
{
    Q_OBJECT

public:
    explicit TimeSpanEdit(QWidget *parent = nullptr);
    ~TimeSpanEdit() override;

    QTimeEdit *start() const;
    QTimeEdit *end() const;
    QWidget *startRow() const;
    QWidget *endRow() const;

    /// The section's title, "lblTitleTime".
    QLabel *title() const;
    /// The label before the first field.
    QLabel *startName() const;
    /// @param name stands before the field, with its colon
    void setStartName(const QString &name);
    /// As of `QDateTimeEdit`: "hh:mm:ss.zzz" unless it is set.
    void setDisplayFormat(const QString &format);
    /// Puts a further row below the fields.
    void addRow(QWidget *row);

signals:
    void startCaptured();
    void endCaptured();

private:
    const std::unique_ptr<Ui::TimeSpanEdit> m_ui;
};
