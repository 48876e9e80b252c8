// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/taskrowform.h"

#include "controls/iconpixmap.h"
#include "controls/plaintooltip.h"
#include "controls/repolish.h"
#include "ui_taskrowform.h"

#include <QSignalBlocker>
#include <QTimer>
#include <QVariant>

namespace {

constexpr int revealPauseMs = 2000;
constexpr int progressMaximum = 100;
constexpr QSize arrowSize(24, 24);
constexpr int editorGap = 7;

} // namespace

TaskRowForm::TaskRowForm(const Kind &kind, bool audio, QWidget *parent)
    : RowForm(parent), m_ui(std::make_unique<Ui::TaskRowForm>())
{
    m_ui->setupUi(this);
    m_ui->wdtInputFacts->setNames(QLatin1String("In"), kind.detail);
    m_ui->wdtOutputFacts->setNames(QLatin1String("Out"), kind.detail);
    if (kind.countsResults)
        m_ui->wdtOutputFacts->setCounting();
    m_ui->wdtOutputFacts->setSizeName(kind.sizeName, kind.finishedSizeName);
    m_ui->lstItemwdtTask->setMaximum(progressMaximum);
    m_ui->lblTo->setPixmap(iconPixmap(QStringLiteral(":/drawable/row_to.png"), arrowSize));
    m_ui->wdtVideo->showPlaceholder(audio);
    nameButtons(kind);
    connectButtons();
}

TaskRowForm::~TaskRowForm() = default;

void TaskRowForm::nameButtons(const Kind &kind)
{
    m_ui->btnSettings->setObjectName(kind.settingsButton);
    m_ui->btnSpeedSwitch->setObjectName(kind.speedButton);
    m_ui->btnConvert->setProperty("textNames", kind.startTexts);
    if (kind.startTexts.isEmpty()) {
        // The form has already asked for the button's size, and with it for its style.
        m_ui->btnConvert->setProperty("alone", true);
        repolish(m_ui->btnConvert);
    }
    if (!kind.startText.isEmpty())
        m_ui->btnConvert->setText(kind.startText);
    if (!kind.settingsIcon.isEmpty())
        m_ui->btnSettings->setIcon(QIcon(kind.settingsIcon));
    m_ui->btnPlayDst->setVisible(kind.playsResult);
    if (kind.editorButton.size() > 0)
        setUpEditor(kind);
}

void TaskRowForm::setUpEditor(const Kind &kind)
{
    if (kind.editorText.isEmpty()) {
        m_ui->wdtVideo->setUpEditor(kind.editorButton, kind.editorToolTip);
        m_editor = m_ui->wdtVideo->editorButton();
    } else {
        m_editor = new QPushButton(kind.editorText, this);
        m_editor->setObjectName(kind.editorButton);
        m_editor->setProperty("cls", QStringLiteral("rowChoice"));
        m_editor->setToolTip(kind.editorToolTip);
        m_editor->setIcon(QIcon(kind.editorIcon));
        m_editor->setMinimumHeight(m_ui->btnSettings->minimumHeight());
        // The line of the settings is free where there are none.
        if (kind.settingsButton.size() > 0) {
            m_ui->layout6->insertWidget(0, m_editor, 1);
            m_ui->layout6->insertSpacing(1, editorGap);
        } else {
            m_ui->layout5->insertWidget(m_ui->layout5->indexOf(m_ui->btnSettings), m_editor);
        }
    }
    connect(m_editor, &QPushButton::clicked, this, &TaskRowForm::editorPressed);
}

void TaskRowForm::connectButtons()
{
    connect(m_ui->btnConvert, &QPushButton::clicked, this, &TaskRowForm::startPressed);
    connect(m_ui->btnStop, &QPushButton::clicked, this, &TaskRowForm::stopPressed);
    connect(m_ui->btnPause, &QPushButton::toggled, this, &TaskRowForm::pauseToggled);
    setUpButtons(m_ui->btnDel, *m_ui->wdtVideo);
    connect(m_ui->btnSettings, &QPushButton::clicked, this,
            [this] { emit settingsPressed(m_ui->btnSettings); });
    connect(m_ui->btnSpeedSwitch, &QPushButton::clicked, this,
            [this] { emit speedPressed(m_ui->btnSpeedSwitch); });
    connect(m_ui->btnPlayDst, &QPushButton::clicked, this, &TaskRowForm::playResultPressed);
    connect(m_ui->btnOpenDir, &QPushButton::clicked, this, &TaskRowForm::reveal);
    connect(m_ui->btnErrorDetail, &QPushButton::clicked, this, &TaskRowForm::detailsPressed);
    connect(m_ui->btnRemarkDetail, &QPushButton::clicked, this, &TaskRowForm::detailsPressed);
    connect(m_ui->cedtOutputName, &ComplexEdit::editingFinished, this,
            [this] { emit nameEdited(m_ui->cedtOutputName->text()); });
}

void TaskRowForm::reveal()
{
    m_ui->btnOpenDir->setEnabled(false);
    QTimer::singleShot(revealPauseMs, this, [this] { m_ui->btnOpenDir->setEnabled(true); });
    emit revealPressed();
}

bool TaskRowForm::isEditing() const
{
    return m_ui->cedtOutputName->isEditing();
}

void TaskRowForm::showName(const RowContent &content)
{
    ComplexEdit *edit = m_ui->cedtOutputName;
    if (edit->isReadOnly() != content.nameReadOnly)
        edit->setReadOnly(content.nameReadOnly);
    if (edit->suffix() != content.outputSuffix)
        edit->setSuffix(content.outputSuffix);
    if (edit->text() != content.outputName && !edit->isEditing())
        edit->setText(content.outputName);
}

void TaskRowForm::showChoices(const RowContent &content)
{
    m_ui->btnSettings->setText(content.settings);
    m_ui->btnSettings->setToolTip(content.settings);
    m_ui->btnSettings->setHidden(content.settings.isEmpty());
    const QStringList texts = m_ui->btnConvert->property("textNames").toStringList();
    if (content.speedType > 0)
        m_ui->btnConvert->setText(texts.value(content.speedType - 1));
    m_ui->btnSpeedSwitch->setProperty("speedType", content.speedType);
    m_ui->btnSpeedSwitch->setVisible(content.speedType > 0);
    if (m_editor)
        m_editor->setEnabled(content.editorEnabled);
}

void TaskRowForm::showPaused(bool paused)
{
    QPushButton *button = m_ui->btnPause;
    const QSignalBlocker blocker(button);
    button->setChecked(paused);
    const QString name = paused ? tr("继续") : tr("暂停");
    if (button->accessibleName() == name)
        return;
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setIcon(QIcon(paused ? QStringLiteral(":/drawable/row_resume.png")
                                 : QStringLiteral(":/drawable/row_pause.png")));
}

void TaskRowForm::showContent(const RowContent &content)
{
    m_ui->lblInputName->setFullText(content.inputName);
    m_ui->wdtInputFacts->showFacts(content.in);
    m_ui->wdtOutputFacts->showFacts(content.out);
    if (content.page == RowContent::DonePage)
        m_ui->wdtOutputFacts->showFinishedSizeName();
    m_ui->wdtVideo->showPicture(content.picture);
    showName(content);
    showChoices(content);

    m_ui->swdtState->setCurrentIndex(content.page);
    m_ui->lstItemwdtTask->setValue(content.progress);
    m_ui->lblProgress->setText(content.progressText);
    m_ui->lblTimeName->setText(content.paused ? tr("已暂停") : tr("剩余时间："));
    m_ui->lblTimeRemained->setText(content.remainingText);
    m_ui->lblTimeRemained->setHidden(content.paused);
    m_ui->wdtTime->setHidden(content.waiting);
    showPaused(content.paused);

    const bool hindered = !content.hindrance.isEmpty();
    m_ui->btnConvert->setEnabled(content.startEnabled && !hindered);
    m_ui->wdtError->setVisible(content.failed || hindered);
    m_ui->lblErrorConvert->setText(hindered ? content.hindrance : tr("转换失败"));
    m_ui->btnErrorDetail->setVisible(content.failed);
    setPlainToolTip(m_ui->lblErrorConvert, content.failureTip);
    m_ui->wdtRemark->setVisible(!content.remark.isEmpty());
    m_ui->lblRemark->setFullText(content.remark);
}
