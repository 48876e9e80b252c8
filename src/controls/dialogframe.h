// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

/// Base of the frameless dialogs: a title row with close button, a window shadow behind, and a
/// body for the subclass's form. Escape and the close button reject.
class DialogFrame : public QDialog
{
    Q_OBJECT

public:
    explicit DialogFrame(QWidget *parent = nullptr);

    /// The text of the title row and of the window.
    QString title() const;
    void setTitle(const QString &title);

    /// Never larger than the screen; gives the keyboard back to its parent when it goes.
    void setVisible(bool visible) override;

    /// For a modal window that has just been hidden while it had the keyboard.
    static void giveKeyboardBack(const QWidget &hidden);

protected:
    /// Object name "wdtBody"; takes the subclass's form.
    QWidget *body() const { return m_body; }

    /// Sets the form up on the body and connects the dialog's on_<object>_<signal> slots. Once, in
    /// the subclass's constructor.
    template<class Form>
    void setUpForm(Form &form)
    {
        form.setupUi(m_body);
        connectByName();
    }

    void paintEvent(QPaintEvent *event) override;

protected slots:
    virtual void on_btnClose_clicked();

private:
    QWidget *makeTitleRow();
    void connectByName();

    QLabel *m_title = nullptr;
    QPushButton *m_close = nullptr;
    QWidget *m_body = nullptr;
};
