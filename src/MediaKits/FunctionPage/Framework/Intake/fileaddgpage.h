// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Intake/filedragdropwidget.h"

#include <memory>

namespace Ui {
class FileAddGPage;
}

/// What a list page shows while it has no file: one large zone that takes drops and opens the file
/// dialog on a click.
class FileAddGPage : public FileDragDropWidget
{
    Q_OBJECT

public:
    explicit FileAddGPage(QWidget *parent = nullptr);
    ~FileAddGPage() override;

    /// Name filters of the file dialog, as fileDialogFilter() makes them.
    void setFilter(const QString &filter) { m_filter = filter; }
    const QString &filter() const { return m_filter; }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void showDragOver(bool over) override;

private slots:
    void on_btnAddMediaFiles_clicked();

private:
    bool isInZone(const QPoint &pos) const;

    const std::unique_ptr<Ui::FileAddGPage> m_ui;
    QString m_filter;
    bool m_pressed = false;
};
