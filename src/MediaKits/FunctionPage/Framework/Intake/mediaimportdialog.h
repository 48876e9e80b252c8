// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace Ui {
class MediaImportDialog;
}

using PerFile = std::function<void(const QString &file)>;

/// Modal progress of an import: hands files one by one to a function, an event-loop turn each, so
/// that the window stays alive. It keeps unseen until the import has taken a while.
class MediaImportDialog : public DialogFrame
{
    Q_OBJECT

public:
    /// What an import may take without the dialog being seen, in ms.
    static constexpr int quietTime = 300;

    explicit MediaImportDialog(QWidget *parent = nullptr);
    ~MediaImportDialog() override;

    /// Opens the dialog modally and returns at once. It finishes, accepted or rejected, after the
    /// last file or before the next one when cancelled.
    /// @param perFile must bear the dialog's end while it runs
    void start(const QStringList &files, const PerFile &perFile);

public slots:
    /// Cancels: Escape and the close button come here too.
    void reject() override;

private slots:
    void on_btnCancel_clicked();

private:
    void importNext();
    void reveal();

    const std::unique_ptr<Ui::MediaImportDialog> m_ui;
    QStringList m_files;
    PerFile m_perFile;
    int m_next = 0;
    bool m_cancelled = false;
};

/// Calls `perFile` for each of `files` in order under a MediaImportDialog, and returns after the
/// last one, when the user cancels, or when `dialogParent` is destroyed.
void importFiles(QWidget *dialogParent, const QStringList &files, const PerFile &perFile);
