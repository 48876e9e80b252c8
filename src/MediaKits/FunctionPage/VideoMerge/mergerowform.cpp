// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoMerge/mergerowform.h"

#include "controls/iconpixmap.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergelistitemwidget.h"
#include "ui_mergerowform.h"

namespace {

constexpr int progressMaximum = 100;
constexpr QSize arrowSize(24, 24);

} // namespace

MergeRowForm::MergeRowForm(bool audio, QWidget *parent)
    : RowForm(parent), m_ui(std::make_unique<Ui::MergeRowForm>())
{
    m_ui->setupUi(this);
    m_ui->wdtInputFacts->setNames(QLatin1String("In"), QLatin1String("Res"));
    m_ui->lstItemwdtTask->setMaximum(progressMaximum);
    // One task fills all rows alike.
    m_ui->lstItemwdtTask->setFlat(true);
    m_ui->lblTo->setPixmap(iconPixmap(QStringLiteral(":/drawable/row_to.png"), arrowSize));
    m_ui->wdtVideo->showPlaceholder(audio);
    setUpButtons(m_ui->btnDel, *m_ui->wdtVideo);
    connect(m_ui->btnUp, &QPushButton::clicked, this, &MergeRowForm::upPressed);
    connect(m_ui->btnDown, &QPushButton::clicked, this, &MergeRowForm::downPressed);
    connect(m_ui->btnCutSettting, &QPushButton::clicked, this, &MergeRowForm::cutPressed);
}

MergeRowForm::~MergeRowForm() = default;

void MergeRowForm::showContent(const RowContent &content)
{
    m_ui->lblInputName->setFullText(content.inputName);
    m_ui->wdtInputFacts->showFacts(content.in);
    m_ui->wdtVideo->showPicture(content.picture);
    m_ui->btnCutSettting->setEnabled(content.editorEnabled);
    const MediaFacts &cut = content.out;
    m_ui->lblOutSize->setText(cut.detail);
    m_ui->lblOutFromTo->setText(cut.duration);
    const bool isCut = !cut.detail.isEmpty() || !cut.duration.isEmpty();
    m_ui->wdtOutputInfo->setVisible(isCut);
    m_ui->lblTo->setVisible(isCut);

    m_ui->swdtState->setCurrentIndex(content.page);
    m_ui->lstItemwdtTask->setValue(content.progress);
    m_ui->lblProgress->setText(content.progressText);
}

QWidget *MergeRowForm::moveButton(int operate) const
{
    QWidget *button = operate == MediaMergeListItemWidget::MoveUp ? m_ui->btnUp : m_ui->btnDown;
    return button->isHidden() ? nullptr : button;
}

void MergeRowForm::setPosition(int position)
{
    using Row = MediaMergeListItemWidget;
    const bool hasAbove = position == Row::LastPosition || position == Row::MiddlePosition;
    const bool hasBelow = position == Row::FirstPosition || position == Row::MiddlePosition;
    m_ui->btnUp->setVisible(hasAbove);
    m_ui->lblCondup->setVisible(hasAbove);
    m_ui->btnDown->setVisible(hasBelow);
    m_ui->lblCondown->setVisible(hasBelow);
}
