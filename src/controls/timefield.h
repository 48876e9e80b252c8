// SPDX-License-Identifier: MIT
#pragma once

#include <QTimeEdit>

/// A time edit that takes a time as it is typed, digit by digit: each goes into the part where the
/// cursor is, a full part lets the next one begin, and separators may be typed along or left out.
/// Its text is a time at every moment, so that nothing has to be held against a limit before the
/// typing ends.
class TimeField : public QTimeEdit
{
    Q_OBJECT

public:
    explicit TimeField(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    bool handleKey(const QKeyEvent &event);
    void typeDigit(int digit);
    void typeSeparator();
    void setPart(int value);
    bool enterNextPart();

    int m_digits = 0;              // typed into the present part so far
    Section m_part = NoSection;    // that they were typed into
    bool m_entersByItself = false; // the part before was full: its separator is still to come
};
