// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/mediafunction.h"

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

/// The field with a page's output folder, "ledtCustomPath" and "btnChangePath", which keeps the
/// page's "outPath" in its section of the settings. An empty field means the page's usual folder.
class OutputFolderEdit : public QWidget
{
    Q_OBJECT

public:
    explicit OutputFolderEdit(QWidget *parent = nullptr);

    /// Shows what the settings have, and tells it.
    void setFunction(MediaFunction function);
    /// The folder that is meant, never empty after `setFunction`.
    QString folder() const;
    /// Names the field and the button that changes it in other words than "输出目录：" and "更改".
    void setCaptions(const QString &field, const QString &change);
    /// Adds a button behind the others, as one that opens the folder.
    /// @return owned by the widget
    QPushButton *addButton(const QString &objectName, const QString &text);

public slots:
    /// Lets the user choose a folder.
    void on_btnChangePath_clicked();
    void on_ledtCustomPath_textChanged(const QString &arg1);

signals:
    void folderChanged(const QString &folder);
    /// The same once a change is through: not with each letter that is typed.
    void folderChosen(const QString &folder);

private:
    void showMeantFolder();
    void showBeginning();

    MediaFunction m_function;
    QHBoxLayout *m_layout;
    QLabel *m_caption;
    QLineEdit *m_field;
    QPushButton *m_change = nullptr;
};
