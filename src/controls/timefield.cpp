// SPDX-License-Identifier: MIT
#include "controls/timefield.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

struct Part
{
    QDateTimeEdit::Section section;
    int width; ///< in digits
    int maximum;
    int unitMs;
};

const Part parts[] = {
    {QDateTimeEdit::HourSection, 2, 23, 3600000},
    {QDateTimeEdit::MinuteSection, 2, 59, 60000},
    {QDateTimeEdit::SecondSection, 2, 59, 1000},
    {QDateTimeEdit::MSecSection, 3, 999, 1},
};

const Part &partOf(QDateTimeEdit::Section section)
{
    const auto found =
        std::find_if(std::begin(parts), std::end(parts),
                     [section](const Part &part) { return part.section == section; });
    return found != std::end(parts) ? *found : parts[0];
}

int valueIn(const QTime &time, const Part &part)
{
    return time.msecsSinceStartOfDay() / part.unitMs % (part.maximum + 1);
}

} // namespace

TimeField::TimeField(QWidget *parent) : QTimeEdit(parent) {}

void TimeField::focusInEvent(QFocusEvent *event)
{
    m_part = NoSection;
    QTimeEdit::focusInEvent(event);
}

void TimeField::keyPressEvent(QKeyEvent *event)
{
    if (handleKey(*event)) {
        event->accept();
        return;
    }
    m_part = NoSection;
    QTimeEdit::keyPressEvent(event);
}

bool TimeField::handleKey(const QKeyEvent &event)
{
    if (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier))
        return false;
    if (event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete) {
        m_part = NoSection;
        setPart(0);
        return true;
    }
    const QChar typed = event.text().size() == 1 ? event.text().at(0) : QChar();
    if (typed >= QLatin1Char('0') && typed <= QLatin1Char('9'))
        typeDigit(typed.digitValue());
    else if (typed == QLatin1Char(':') || typed == QLatin1Char('.'))
        typeSeparator();
    else
        return false;
    return true;
}

void TimeField::typeDigit(int digit)
{
    if (lineEdit()->hasSelectedText() && lineEdit()->selectedText() == lineEdit()->text()) {
        setTime(QTime(0, 0));
        setSelectedSection(HourSection);
        m_part = NoSection;
    }
    const Part &part = partOf(currentSection());
    const int before = m_part == part.section ? valueIn(time(), part) : 0;
    const bool goesOn = m_part == part.section && before * 10 + digit <= part.maximum;
    m_digits = goesOn ? m_digits + 1 : 1;
    m_part = part.section;
    m_entersByItself = false;
    const int value = goesOn ? before * 10 + digit : digit;
    setPart(value);
    if (m_digits == part.width || value * 10 > part.maximum)
        m_entersByItself = enterNextPart();
}

void TimeField::typeSeparator()
{
    if (!std::exchange(m_entersByItself, false))
        enterNextPart();
}

bool TimeField::enterNextPart()
{
    m_part = NoSection;
    const Part &part = partOf(currentSection());
    const bool hasNext = &part + 1 != std::end(parts);
    if (hasNext)
        setSelectedSection((&part + 1)->section);
    return hasNext;
}

void TimeField::setPart(int value)
{
    const Section section = currentSection();
    const Part &part = partOf(section);
    int rest = time().msecsSinceStartOfDay() - valueIn(time(), part) * part.unitMs;
    // What isn't shown isn't meant.
    constexpr int secondMs = 1000;
    if (!(displayedSections() & MSecSection))
        rest -= rest % secondMs;
    setTime(QTime::fromMSecsSinceStartOfDay(rest + value * part.unitMs));
    setSelectedSection(section);
}
