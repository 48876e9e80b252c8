// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/timespaneditor.h"

#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanedit.h"

#include <QHBoxLayout>
#include <QKeyEvent>

namespace {
constexpr int sectionGap = 12;
}

TimeSpanEditor::TimeSpanEditor(QWidget *parent)
    : EditorDialog(parent), m_sections(new QHBoxLayout(editorArea()))
{
    auto *edit = new TimeSpanEdit;
    m_sections->setContentsMargins(0, 0, 0, 0);
    m_sections->setSpacing(sectionGap);
    addSection(edit);
    m_span = new TimeSpanBinding({edit->start(), edit->end(), &scrubBar()}, this);
    connect(m_span, &TimeSpanBinding::pointChanged, this, &TimeSpanEditor::seek);
    connect(m_span, &TimeSpanBinding::remarked, this, &TimeSpanEditor::showHint);
    connect(edit, &TimeSpanEdit::startCaptured, this, &TimeSpanEditor::on_btnSCapture_clicked);
    connect(edit, &TimeSpanEdit::endCaptured, this, &TimeSpanEditor::on_btnECapture_clicked);
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
    else if (isPlain && event.key() == Qt::Key_O)
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
