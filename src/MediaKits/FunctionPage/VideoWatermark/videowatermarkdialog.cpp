// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/videowatermarkdialog.h"

#include "controls/filechooser.h"
#include "controls/interceptslider.h"
#include "controls/runmodal.h"
#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentpane.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapter.h"
#include "MediaKits/FunctionPage/Framework/Editors/Mask/watermarkmaskadapteritem.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanedit.h"
#include "MediaKits/FunctionPage/VideoWatermark/markkeys.h"
#include "MediaKits/FunctionPage/VideoWatermark/markset.h"
#include "MediaKits/FunctionPage/VideoWatermark/templatemenu.h"
#include "MediaKits/FunctionPage/VideoWatermark/texteditdialog.h"
#include "MediaKits/FunctionPage/VideoWatermark/watermarkfragmentitemwidget.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "ui_videowatermarkdialog.h"

#include <QFileInfo>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>

namespace {

constexpr QSize usualSize(1080, 720);
constexpr int rowHeight = 56;
constexpr int panelHeight = 152;
constexpr float percent = 100.0F;

QString pictureFilter()
{
    QStringList patterns;
    const QList<QByteArray> known = QImageReader::supportedImageFormats();
    for (const char *suffix : {"png", "jpg", "jpeg", "webp", "bmp", "svg"}) {
        if (known.contains(suffix))
            patterns += QLatin1String("*.") + QLatin1String(suffix);
    }
    return VideoWatermarkDialog::tr("图片文件(%1)").arg(patterns.join(QLatin1Char(' '))) +
           QLatin1String(";;");
}

QVariantMap textMap(const TextEditDialog &dialog)
{
    return {{MarkKey::text, dialog.text()},
            {MarkKey::font, dialog.textFont()},
            {MarkKey::fontcolor, dialog.color()}};
}

FragmentPane::Kind markRows()
{
    FragmentPane::Kind kind;
    kind.role = MarkRole;
    kind.rowHeight = rowHeight;
    kind.hasCurrent = true;
    kind.clearButton = QLatin1String("btnClear");
    return kind;
}

} // namespace

VideoWatermarkDialog::VideoWatermarkDialog(QWidget *parent)
    : TimeSpanEditor(parent),
      m_ui(std::make_unique<Ui::VideoWatermarkDialog>()),
      m_mask(new WatermarkMaskAdapter(player().videoLabel(), this)),
      m_pane(new FragmentPane(markRows(), this)),
      m_marks(new MarkSet(m_pane, m_mask, this)),
      m_previewButton(new QPushButton(tr("预览"), this))
{
    setObjectName(QStringLiteral("VideoWatermarkDialog"));
    setTitle(tr("水印设置"));
    setUpPanes();
    connectControls();
    offerForAll();
    showPanel();
    resize(usualSize);
}

VideoWatermarkDialog::~VideoWatermarkDialog()
{
    m_marks->disconnect(this);
    m_pane->list()->disconnect(m_marks);
    m_pane->list()->model()->disconnect(m_marks);
    m_mask->disconnect(m_marks);
}

void VideoWatermarkDialog::setUpPanes()
{
    QWidget form;
    m_ui->setupUi(&form);
    addButtonRow(m_ui->wdtAddWM);
    addSection(m_ui->wdtPosition);
    addSection(m_ui->wdtOpacity);
    editorArea()->setObjectName(QStringLiteral("scrollArea"));
    // The picture keeps its size while the other sections aren't there.
    timeSection().setMinimumHeight(panelHeight);
    timeSection().setObjectName(QStringLiteral("wdtTimeQuantum"));
    timeSection().title()->setText(tr("水印时间段"));
    timeSection().setDisplayFormat(QStringLiteral("hh:mm:ss"));
    m_pane->setTexts(tr("水印列表"), tr("添加图片、文字，或框出要抹去的部分，再在画面上拖动。"));
    m_pane->addButton()->hide();
    m_pane->list()->setFocusPolicy(Qt::TabFocus);
    m_previewButton->setObjectName(QStringLiteral("btnPreview"));
    m_previewButton->setCheckable(true);
    m_previewButton->setMinimumSize(confirmButton()->minimumSize());
    m_previewButton->setToolTip(tr("如输出文件那样显示"));
    setSidePane(m_pane, m_previewButton);
    confirmButton()->setObjectName(QStringLiteral("btnOk"));
}

void VideoWatermarkDialog::connectControls()
{
    const auto pressed = [this](QPushButton *button, void (VideoWatermarkDialog::*slot)()) {
        connect(button, &QPushButton::clicked, this, slot);
    };
    pressed(m_ui->btnAddTextWM, &VideoWatermarkDialog::on_btnAddTextWM_clicked);
    pressed(m_ui->btnAddImageWM, &VideoWatermarkDialog::on_btnAddImageWM_clicked);
    pressed(m_ui->btnAddDelogo, &VideoWatermarkDialog::on_btnAddDelogo_clicked);
    pressed(m_ui->btnTemplate, &VideoWatermarkDialog::on_btnTemplate_clicked);
    pressed(confirmButton(), &VideoWatermarkDialog::on_btnOk_clicked);
    connect(m_previewButton, &QPushButton::toggled, this,
            &VideoWatermarkDialog::on_btnPreview_toggled);
    connect(m_ui->sudokuButtons, &SudokuButtons::placeClicked, this,
            &VideoWatermarkDialog::on_sudokuButtons_placeClicked);
    connect(m_ui->sliderOpacity, &QSlider::valueChanged, m_ui->sbOpacity, &QSpinBox::setValue);
    connect(m_ui->sbOpacity, qOverload<int>(&QSpinBox::valueChanged), this,
            &VideoWatermarkDialog::applyOpacity);
    connect(m_ui->cbAspectKeep, &QCheckBox::toggled, m_marks, [this](bool keeps) {
        m_marks->apply({{MarkKey::aspectKeep, keeps}});
    });
    connect(&span(), &TimeSpanBinding::pointChanged, this, &VideoWatermarkDialog::applyTime);
    connect(m_marks, &MarkSet::currentChanged, this, &VideoWatermarkDialog::showPanel);
    connect(m_marks, &MarkSet::chosen, this, &VideoWatermarkDialog::goToMark);
    connect(m_marks, &MarkSet::textEditWanted, this, &VideoWatermarkDialog::editText);
    connect(m_marks, &MarkSet::edited, this, [this](const QString &step) {
        goToMark();
        m_marks->showAt(position());
        m_history.note(plainList(), step);
    });
    connect(this, &EditorDialog::positionChanged, m_marks, &MarkSet::showAt);
    // One that begins again knows nothing of what it was told.
    connect(&player(), &CSVideoPlayer::started, this,
            [this] { QTimer::singleShot(0, this, &VideoWatermarkDialog::showInPlayer); });
    m_pane->list()->installEventFilter(this);
}

void VideoWatermarkDialog::setDuration(int ms)
{
    m_picture.durationMs = ms;
    TimeSpanEditor::setDuration(ms);
}

void VideoWatermarkDialog::setPicture(const QSize &size, double pixelAspect)
{
    m_picture.size = size;
    m_picture.pixelAspect = pixelAspect;
    TimeSpanEditor::setPicture(size, pixelAspect);
    m_mask->setVideoSize(size, pixelAspect);
}

void VideoWatermarkDialog::setVideo(const VEncParam *video)
{
    if (video)
        m_preview.setVideo(*video);
    TimeSpanEditor::setVideo(video);
}

void VideoWatermarkDialog::setMarks(const QVariantList &marks)
{
    m_marks->setMarks(sharedMarks(plainMarks(marks)));
    m_before = plainList();
    m_history.reset(m_before);
    showPanel();
}

QVariantList VideoWatermarkDialog::marks() const
{
    return m_marks->marks();
}

QVariantList VideoWatermarkDialog::plainList() const
{
    return plainMarks(m_marks->marks());
}

bool VideoWatermarkDialog::isChanged() const
{
    return plainList() != m_before;
}

void VideoWatermarkDialog::addMark(QVariantMap map)
{
    map.insert(MarkKey::startTime, span().start());
    map.insert(MarkKey::endTime, span().end());
    m_marks->add(Mark::create(map));
}

void VideoWatermarkDialog::on_btnAddTextWM_clicked()
{
    const auto typed = runModal(new TextEditDialog(this), textMap);
    if (!typed || typed->value(MarkKey::text).toString().isEmpty())
        return;
    QVariantMap map = *typed;
    map.insert(MarkKey::filter, MarkFilter::text);
    map.insert(MarkKey::opacity, 1.0);
    addMark(map);
}

void VideoWatermarkDialog::on_btnAddImageWM_clicked()
{
    const QPointer<VideoWatermarkDialog> alive(this);
    const QString path = FileChooser::chooseFile(this, {tr("图片文件"), pictureFilter(), {}});
    if (!alive || path.isEmpty())
        return;
    addMark({{MarkKey::filter, MarkFilter::image},
             {MarkKey::imagefile, path},
             {MarkKey::text, QFileInfo(path).fileName()},
             {MarkKey::opacity, 1.0}});
}

void VideoWatermarkDialog::on_btnAddDelogo_clicked()
{
    addMark({{MarkKey::filter, MarkFilter::delogo}, {MarkKey::text, tr("去水印")}});
}

void VideoWatermarkDialog::editText()
{
    const Mark mark = m_marks->current();
    if (!mark)
        return;
    auto *dialog = new TextEditDialog(this);
    dialog->setColor(mark->value(MarkKey::fontcolor).value<QColor>());
    dialog->setTextFont(mark->value(MarkKey::font).value<QFont>());
    dialog->setText(mark->value(MarkKey::text).toString());
    auto typed = runModal(dialog, textMap);
    if (!typed)
        return;
    // One without letters would have nothing to be grasped by.
    if (typed->value(MarkKey::text).toString().isEmpty())
        typed->remove(MarkKey::text);
    m_marks->apply(*typed);
}

void VideoWatermarkDialog::showPanel()
{
    const int type = m_marks->currentType();
    const bool isSeen =
        type == WatermarkMaskAdapterItem::Text || type == WatermarkMaskAdapterItem::Image;
    m_ui->wdtPosition->setVisible(isSeen);
    m_ui->wdtOpacity->setVisible(isSeen);
    m_ui->cbAspectKeep->setVisible(type == WatermarkMaskAdapterItem::Image);
    const Mark mark = m_marks->current();
    if (!mark)
        return;
    const QSignalBlocker spanBlocker(&span());
    const QSignalBlocker sliderBlocker(m_ui->sliderOpacity);
    const QSignalBlocker boxBlocker(m_ui->sbOpacity);
    const QSignalBlocker aspectBlocker(m_ui->cbAspectKeep);
    span().setSpan(QSharedPointer<TimeSpan>::create(
        TimeSpan{mark->value(MarkKey::startTime).toInt(), mark->value(MarkKey::endTime).toInt()}));
    const int opacity = qRound(mark->value(MarkKey::opacity, 1.0).toDouble() * double(percent));
    m_ui->sliderOpacity->setValue(opacity);
    m_ui->sbOpacity->setValue(opacity);
    m_ui->cbAspectKeep->setChecked(mark->value(MarkKey::aspectKeep, true).toBool());
}

void VideoWatermarkDialog::goToMark()
{
    const Mark mark = m_marks->current();
    if (mark && !isSeenAt(*mark, position()))
        seek(mark->value(MarkKey::startTime).toInt());
}

void VideoWatermarkDialog::applyTime()
{
    m_marks->apply({{MarkKey::startTime, span().start()}, {MarkKey::endTime, span().end()}});
}

void VideoWatermarkDialog::applyOpacity(int value)
{
    {
        const QSignalBlocker blocker(m_ui->sliderOpacity);
        m_ui->sliderOpacity->setValue(value);
    }
    m_marks->apply({{MarkKey::opacity, float(value) / percent}});
}

void VideoWatermarkDialog::on_sudokuButtons_placeClicked(int place)
{
    m_marks->alignCurrent(place);
}

void VideoWatermarkDialog::on_btnPreview_toggled(bool checked)
{
    m_mask->setMaskEnabled(!checked);
    editorArea()->setVisible(!checked);
    m_previewButton->setText(checked ? tr("编辑") : tr("预览"));
    m_ui->wdtAddWM->setEnabled(!checked);
    scrubBar().setRangeVisible(!checked, !checked);
    m_pane->setEnabled(!checked);
    m_marks->setRowsEnabled(!checked);
    showInPlayer();
}

void VideoWatermarkDialog::showInPlayer()
{
    const bool previews = m_previewButton->isChecked();
    player().setVideoGraph(previews ? m_preview.graph(plainList()) : QString());
}

void VideoWatermarkDialog::on_btnOk_clicked()
{
    accept();
}

bool VideoWatermarkDialog::eventFilter(QObject *watched, QEvent *event)
{
    // The list would take these keys for its texts.
    if (watched == m_pane->list() && event->type() == QEvent::KeyPress &&
        handleMarkKey(*static_cast<QKeyEvent *>(event)))
        return true;
    return TimeSpanEditor::eventFilter(watched, event);
}

bool VideoWatermarkDialog::handleKey(const QKeyEvent &event)
{
    if (!m_previewButton->isChecked() && (handleMarkKey(event) || moveMark(*m_marks, event)))
        return true;
    return TimeSpanEditor::handleKey(event);
}

bool VideoWatermarkDialog::handleMarkKey(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::Copy))
        copyMark(*m_marks, m_picture);
    else if (event.matches(QKeySequence::Paste))
        pasteMark(*m_marks, m_picture);
    else if (event.matches(QKeySequence::Undo))
        undo();
    else if (event.matches(QKeySequence::Delete))
        m_marks->removeCurrent();
    else
        return false;
    return true;
}

void VideoWatermarkDialog::undo()
{
    const auto before = m_history.back();
    if (!before)
        return;
    const int row = m_pane->list()->currentRow();
    m_marks->setMarks(sharedMarks(*before));
    if (row >= 0)
        m_pane->list()->setCurrentRow(std::min(row, m_pane->list()->count() - 1));
    m_marks->showAt(position());
    showPanel();
}

void VideoWatermarkDialog::on_btnTemplate_clicked()
{
    const QPointer<VideoWatermarkDialog> alive(this);
    tellOfBrokenTemplates(this);
    if (!alive)
        return;
    auto *menu = new TemplateMenu(!m_marks->marks().isEmpty(), this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // Behind the menu's own work: while a question is open, this dialog may go, and the menu too.
    connect(menu, &TemplateMenu::chosen, this, &VideoWatermarkDialog::useTemplate,
            Qt::QueuedConnection);
    connect(menu, &TemplateMenu::savingWanted, this, &VideoWatermarkDialog::saveAsTemplate,
            Qt::QueuedConnection);
    connect(
        menu, &TemplateMenu::removalWanted, this,
        [this](const QString &name) { askAndRemoveTemplate(name, this); }, Qt::QueuedConnection);
    menu->popup(m_ui->btnTemplate->mapToGlobal(QPoint(0, m_ui->btnTemplate->height())));
}

void VideoWatermarkDialog::saveAsTemplate()
{
    const QPointer<VideoWatermarkDialog> alive(this);
    const QString name = askTemplateName(this);
    if (alive && !name.isEmpty())
        saveTemplate(name, plainList(), m_picture, this);
}

void VideoWatermarkDialog::useTemplate(const QString &name)
{
    const QVariantList added = templateFor(name, m_picture);
    m_marks->setMarks(m_marks->marks() + sharedMarks(added));
    m_marks->showAt(position());
    m_history.note(plainList());
    showPanel();
}
