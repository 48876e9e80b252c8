// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/mediafunction.h"

#include <QWidget>

class QHBoxLayout;
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
    /// Adds a button behind the others, as one that opens the folder.
    /// @return owned by the widget
    QPushButton *addButton(const QString &objectName, const QString &text);

public slots:
    /// Lets the user choose a folder.
    void on_btnChangePath_clicked();
    void on_ledtCustomPath_textChanged(const QString &arg1);

signals:
    void folderChanged(const QString &folder);

private:
    void showMeantFolder();

    MediaFunction m_function;
    QHBoxLayout *m_layout;
    QLineEdit *m_field;
};
