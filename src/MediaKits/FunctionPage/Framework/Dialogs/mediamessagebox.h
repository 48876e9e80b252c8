// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"
#include "MediaKits/MediaTasksManager/mediatask.h"

#include <memory>

namespace Ui {
class MediaMessageBox;
}

/// A title, a text and the button "确定", for a question also "取消", for a failure also "详情".
/// The title is "提示" until set.
class MediaMessageBox : public DialogFrame
{
    Q_OBJECT

public:
    explicit MediaMessageBox(QWidget *parent = nullptr);
    ~MediaMessageBox() override;

    /// Plain text; long lines wrap.
    void setText(const QString &text);
    QString text() const;

    /// Shows a message modally and returns when the user closed it.
    static void showMessage(const QString &title, const QString &text, QWidget *parent);
    /// Asks modally; true when the user agreed, and the parent is still there.
    static bool ask(const QString &title, const QString &text, QWidget *parent);
    /// Tells modally of something that failed and why; what the tool said is behind a button.
    /// @param text what failed
    static void showFailure(const QString &text, const TaskFailure &failure, QWidget *parent);

private slots:
    void on_btnDetails_clicked();
    void on_btnOK_clicked();
    void on_btnCancel_clicked();

private:
    const std::unique_ptr<Ui::MediaMessageBox> m_ui;
    TaskFailure m_failure;
};
