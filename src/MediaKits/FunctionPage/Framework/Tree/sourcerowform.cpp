// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Tree/sourcerowform.h"

#include "controls/repolish.h"
#include "ui_sourcerowform.h"

#include <QVariant>

namespace {

void setLook(QWidget *widget, const QString &look)
{
    if (widget->property("cls") == look)
        return;
    widget->setProperty("cls", look);
    repolish(widget);
}

} // namespace

SourceRowForm::SourceRowForm(QLatin1String name, bool audio, QWidget *parent)
    : RowForm(parent), m_ui(std::make_unique<Ui::SourceRowForm>())
{
    m_ui->setupUi(this);
    m_ui->lstItemwdtSource->setObjectName(name);
    m_ui->wdtInputFacts->setNames(QLatin1String("In"), QLatin1String("Res"));
    m_ui->wdtInputFacts->setInLine();
    m_ui->wdtVideo->showPlaceholder(audio);
    setLook(m_ui->wdtVideo->playButton(), QStringLiteral("overThumbnail"));
    setUpButtons(m_ui->btnDel, *m_ui->wdtVideo);
    connect(m_ui->btnAddItem, &QPushButton::clicked, this, &SourceRowForm::addPressed);
}

SourceRowForm::~SourceRowForm() = default;

void SourceRowForm::showContent(const RowContent &content)
{
    m_ui->lblInputName->setFullText(content.inputName);
    m_ui->wdtInputFacts->showFacts(content.in);
    m_ui->wdtVideo->showPicture(content.picture);
    m_ui->btnAddItem->setEnabled(content.editorEnabled);
    setLook(m_ui->btnAddItem,
            content.fragments == 0 ? QStringLiteral("primary") : QStringLiteral("plain"));
    showHint(content);
}

void SourceRowForm::showHint(const RowContent &content)
{
    const bool hindered = !content.hindrance.isEmpty();
    setLook(m_ui->lblHint, hindered ? QStringLiteral("error") : QStringLiteral("sub"));
    if (hindered)
        m_ui->lblHint->setFullText(content.hindrance);
    else if (content.fragments == 0)
        m_ui->lblHint->setFullText(tr("还没有片段，请先添加"));
    else
        m_ui->lblHint->setFullText(tr("共 %1 个片段").arg(content.fragments));
}
