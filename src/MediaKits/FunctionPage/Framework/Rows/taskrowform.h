// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/rowform.h"

#include <memory>

namespace Ui {
class TaskRowForm;
}
class QPushButton;

/// The widgets of one row: source and result, three pages for idle, working and done. Buttons that
/// only some pages have get their object names here.
class TaskRowForm : public RowForm
{
    Q_OBJECT

public:
    /// What the rows of one page have.
    struct Kind
    {
        /// What the second label of source and result shows, as "Res" for "lblInRes".
        QLatin1String detail;
        /// Object name of the button that opens the row's choices; empty for none.
        QLatin1String settingsButton;
        /// Icon of that button; empty for that of a choice of format.
        QString settingsIcon;
        /// Whether each row chooses a preset of its own, where the rows have presets.
        bool ownPreset = true;
        /// Object name and tool tip of the button that opens the row's editor; empty for none.
        QLatin1String editorButton;
        QString editorToolTip;
        /// Text of that button, which then stands beside the start button; without one it is an
        /// icon over the picture.
        QString editorText;
        /// Icon beside that text.
        QString editorIcon;
        /// Object name of the button that opens the choice of speed.
        QLatin1String speedButton = QLatin1String("btnSpeedSwitch");
        /// Texts of the start button by speed; empty for rows without a choice of speed.
        QStringList startTexts;
        /// Its one text in rows without a choice of speed; empty for "开始".
        QString startText;
        /// Whether a result is told by the number and the kind of its files: these two stand in
        /// the place of its second fact and its length.
        bool countsResults = false;
        /// Whether the preview window plays what comes out.
        bool playsResult = true;
        /// What stands before the size of the result, and instead of it once it is finished; empty
        /// for nothing.
        QString sizeName;
        QString finishedSizeName;
    };

    TaskRowForm(const Kind &kind, bool audio, QWidget *parent);
    ~TaskRowForm() override;

    /// A name that is being typed stays.
    void showContent(const RowContent &content) override;
    bool isEditing() const override;

signals:
    void startPressed();
    void stopPressed();
    void pauseToggled(bool paused);
    void settingsPressed(QWidget *button);
    void speedPressed(QWidget *button);
    void editorPressed();
    void playResultPressed();
    void revealPressed();
    void detailsPressed();
    /// The text without its suffix.
    void nameEdited(const QString &name);

private:
    void nameButtons(const Kind &kind);
    void setUpEditor(const Kind &kind);
    void connectButtons();
    void showName(const RowContent &content);
    void showChoices(const RowContent &content);
    void showPaused(bool paused);
    void reveal();

    const std::unique_ptr<Ui::TaskRowForm> m_ui;
    QPushButton *m_editor = nullptr;
};
