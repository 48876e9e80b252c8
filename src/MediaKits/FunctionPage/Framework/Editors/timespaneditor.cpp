// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/timespaneditor.h"

#include "controls/interceptslider.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanedit.h"

#include <QHBoxLayout>
#include <QKeyEvent>

namespace {
constexpr int sectionGap = 12;
}

TimeSpanEditor::TimeSpanEditor(QWidget *parent, Points points)
    : EditorDialog(parent),
      m_points(points),
      m_edit(new TimeSpanEdit),
      m_sections(new QHBoxLayout(editorArea()))
{
    m_sections->setContentsMargins(0, 0, 0, 0);
    m_sections->setSpacing(sectionGap);
    setColumns(m_sections);
    addSection(m_edit);
    const bool hasEnd = points == StartAndEnd;
    m_edit->endRow()->setVisible(hasEnd);
    scrubBar().setRangeVisible(hasEnd, hasEnd);
    m_span = new TimeSpanBinding(
        {m_edit->start(), hasEnd ? m_edit->end() : nullptr, hasEnd ? &scrubBar() : nullptr}, this);
    connect(m_span, &TimeSpanBinding::pointChanged, this, &TimeSpanEditor::seek);
    connect(m_span, &TimeSpanBinding::remarked, this, &TimeSpanEditor::showHint);
    connect(m_edit, &TimeSpanEdit::startCaptured, this, &TimeSpanEditor::on_btnSCapture_clicked);
    connect(m_edit, &TimeSpanEdit::endCaptured, this, &TimeSpanEditor::on_btnECapture_clicked);
}

void TimeSpanEditor::addSection(QWidget *section)
{
    section->setProperty("cls", QStringLiteral("card"));
    section->setAttribute(Qt::WA_StyledBackground);
    m_sections->addWidget(section, 1);
}

void TimeSpanEditor::setDuration(int ms)
{
    EditorDialog::setDuration(ms);
    m_span->setDuration(ms, frameMs());
}

bool TimeSpanEditor::handleKey(const QKeyEvent &event)
{
    const bool isPlain = event.modifiers() == Qt::NoModifier;
    if (isPlain && event.key() == Qt::Key_I)
        on_btnSCapture_clicked();
    else if (isPlain && event.key() == Qt::Key_O && m_points == StartAndEnd)
        on_btnECapture_clicked();
    else
        return EditorDialog::handleKey(event);
    return true;
}

void TimeSpanEditor::on_btnSCapture_clicked()
{
    m_span->setStart(position());
}

void TimeSpanEditor::on_btnECapture_clicked()
{
    m_span->setEnd(position());
}
