// SPDX-License-Identifier: MIT
#pragma once

#include <QVariant>
#include <QWidget>

#include <memory>

namespace Ui {
class ComplexEdit;
}

/// A label that turns into an edit: it shows a text with a suffix, and its button opens the edit,
/// which holds the text alone. Enter or a click elsewhere ends the edit, Escape also restores the
/// text from before.
class ComplexEdit : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY editTextChanged)
    Q_PROPERTY(QString suffix READ suffix WRITE setSuffix)
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)

public:
    explicit ComplexEdit(QWidget *parent = nullptr);
    ~ComplexEdit() override;

    /// Without the suffix; while the edit is open, what has been typed so far.
    QString text() const;
    void setText(const QString &text);

    QString suffix() const { return m_suffix; }
    void setSuffix(const QString &suffix);

    /// Whether the edit is open.
    bool isEditing() const { return m_editing; }

    bool isReadOnly() const { return m_readOnly; }
    /// Style sheets see it as the property "ReadOnly" and hide the button by it.
    void setReadOnly(bool readOnly);

    /// Room for the whole text; the minimum leaves room for a few characters.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    /// Shortens the shown text to the room that there is. `var` is the label's new width in pixels.
    void afterMethod(const QVariant &var);

signals:
    void editTextChanged(const QString &text);
    void editingFinished();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private slots:
    void on_btnEdit_clicked();
    void on_edtText_editingFinished();

private:
    void setEditing(bool editing);
    bool endsEdit(int key);
    void showText();
    int labelRoom() const;
    int widthBesideLabel() const;

    std::unique_ptr<Ui::ComplexEdit> m_ui;
    QString m_suffix;
    QString m_textBefore;
    bool m_readOnly = false;
    bool m_editing = false;
};
