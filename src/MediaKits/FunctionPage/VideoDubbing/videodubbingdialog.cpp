// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/videodubbingdialog.h"

#include "controls/filechooser.h"
#include "controls/interceptslider.h"
#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentpane.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanedit.h"
#include "MediaKits/FunctionPage/VideoDubbing/dubbingfragmentitemwidget.h"
#include "MediaKits/FunctionPage/VideoDubbing/dubbingmodeedit.h"
#include "MediaKits/FunctionPage/VideoDubbing/loudnessscan.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaInfo/mediainfo.h"
#include "MediaKits/Player/csvideoplayer.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

namespace {

constexpr float percent = 100.0F;
constexpr int secondMs = 1000;
constexpr int mostVolume = 200;
constexpr int usualVolume = 100;
constexpr int rowHeight = 68;
constexpr int labelWidth = 96;
constexpr int rowSpacing = 4;
constexpr QSize volumeSize(88, 32);
constexpr QSize usualSize(1036, 640);

FragmentPane::Kind musicPane()
{
    FragmentPane::Kind kind;
    kind.role = DubbingFragmentItemWidget::entryRole;
    kind.rowHeight = rowHeight;
    kind.hasCurrent = true;
    kind.clearButton = QLatin1String("btnClr");
    return kind;
}

int percentOf(const QVariant &factor)
{
    return qRound(factor.toFloat() * percent);
}

} // namespace

VideoDubbingDialog::VideoDubbingDialog(QWidget *parent)
    : TimeSpanEditor(parent, StartAlone),
      m_pane(new FragmentPane(musicPane(), this)),
      m_mode(new DubbingModeEdit),
      m_scan(new LoudnessScan(this)),
      m_mix(new MixPreview(&player(), this))
{
    setObjectName(QStringLiteral("VideoDubbingDialog"));
    setTitle(tr("配乐设置"));
    setUpList();
    setUpControls();
    setUpMix();
    offerForAll();
    scrubBar().setRangeVisible(false, true);
    m_before = optionMap();
    resize(usualSize);
}

VideoDubbingDialog::~VideoDubbingDialog()
{
    // What goes with the dialog has nothing to tell it any more.
    m_pane->list()->disconnect(this);
    m_pane->list()->model()->disconnect(this);
    m_mix->disconnect(this);
}

void VideoDubbingDialog::setUpList()
{
    m_pane->setTexts(
        tr("配乐列表"),
        tr("设定开始时间和音量后，点击“添加配乐”。可以添加多段，每段各有自己的开始时间和音量。"));
    m_pane->list()->setFocusPolicy(Qt::TabFocus);
    QPushButton *add = m_pane->addButton();
    add->setObjectName(QStringLiteral("btnAddDubbing"));
    add->setText(tr("添加配乐"));
    setSidePane(m_pane, add);
    confirmButton()->setObjectName(QStringLiteral("btnOk"));
    connect(add, &QPushButton::clicked, this, &VideoDubbingDialog::on_btnAddDubbing_clicked);
    connect(confirmButton(), &QPushButton::clicked, this, &VideoDubbingDialog::on_btnOk_clicked);
    connect(m_pane->list(), &QListWidget::currentItemChanged, this,
            &VideoDubbingDialog::onCurrentChanged);
    connect(m_pane->list()->model(), &QAbstractItemModel::rowsRemoved, this,
            &VideoDubbingDialog::onChanged);
}

void VideoDubbingDialog::setUpControls()
{
    timeSection().title()->setText(tr("设置配置"));
    timeSection().setStartName(tr("配音开始时间："));
    timeSection().startName()->setMinimumWidth(labelWidth);
    m_audioVolume = addVolumeRow(tr("声音音量："), "sbAudioVolume");
    m_videoVolume = addVolumeRow(tr("视频音量："), "sbVideoVolume");
    addSection(m_mode);
    connect(&span(), &TimeSpanBinding::pointChanged, this, [this](int ms) {
        store({{MusicKey::startTime, ms}});
    });
    connect(m_audioVolume, qOverload<int>(&QSpinBox::valueChanged), this, [this](int value) {
        store({{MusicKey::volume, float(value) / percent}});
    });
    connect(m_videoVolume, qOverload<int>(&QSpinBox::valueChanged), this,
            &VideoDubbingDialog::onChanged);
    connect(m_mode, &DubbingModeEdit::modeChanged, this, &VideoDubbingDialog::onChanged);
}

QSpinBox *VideoDubbingDialog::addVolumeRow(const QString &name, const char *objectName)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(rowSpacing);
    auto *label = new QLabel(name);
    label->setMinimumWidth(labelWidth);
    auto *box = new QSpinBox;
    box->setObjectName(QLatin1String(objectName));
    box->setAccessibleName(QString(name).remove(tr("：")));
    box->setRange(0, mostVolume);
    box->setValue(usualVolume);
    box->setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
    box->setFixedSize(volumeSize);
    auto *note = new QLabel(tr("范围(0-200)"));
    note->setProperty("cls", QStringLiteral("sub"));
    layout->addWidget(label);
    layout->addWidget(box);
    layout->addWidget(note);
    layout->addStretch(1);
    timeSection().addRow(row);
    return box;
}

void VideoDubbingDialog::setUpMix()
{
    m_mode->setMixEnabled(false);
    connect(m_scan, &LoudnessScan::measured, this, &VideoDubbingDialog::showLoudness);
    connect(m_mode, &DubbingModeEdit::mixToggled, this, &VideoDubbingDialog::toggleMix);
    connect(m_mix, &MixPreview::stateChanged, m_mode, &DubbingModeEdit::showMixState);
    connect(m_mix, &MixPreview::begins, this, [this](int ms) {
        seek(ms);
        setPlaying(true);
    });
    connect(m_mix, &MixPreview::ended, this, [this] { setPlaying(false); });
    connect(m_mix, &MixPreview::failed, this,
            [this](const QString &cause) { showHint(tr("无法试听：%1").arg(cause)); });
}

void VideoDubbingDialog::setConversion(const ConvertTaskParam &param)
{
    m_conversion = param;
    m_mode->setMixEnabled(true);
    m_scan->want(param.inputFile);
    showLoudness();
}

void VideoDubbingDialog::setDuration(int ms)
{
    TimeSpanEditor::setDuration(ms);
    showCurrent();
}

void VideoDubbingDialog::setSettings(const QVariantMap &settings)
{
    for (const QVariant &music : settings.value(DubbingKey::musics).toList()) {
        const auto entry = music.value<MusicEntry>();
        // A cancelled dialog must leave no trace in it.
        m_pane->append<DubbingFragmentItemWidget>(MusicEntry::create(*entry));
    }
    m_videoVolume->setValue(percentOf(settings.value(DubbingKey::videoVolume)));
    m_mode->setMixed(settings.value(DubbingKey::isMax).toBool());
    m_before = optionMap();
}

QVariantMap VideoDubbingDialog::settings() const
{
    QVariantList musics;
    for (const MusicEntry &entry : m_pane->fragments<QVariantMap>())
        musics += QVariant::fromValue(entry);
    return {{DubbingKey::musics, musics},
            {DubbingKey::videoVolume, float(m_videoVolume->value()) / percent},
            {DubbingKey::isMax, m_mode->isMixed()}};
}

QVariantMap VideoDubbingDialog::optionMap() const
{
    QVariantMap map = settings();
    QVariantList musics;
    for (const MusicEntry &entry : m_pane->fragments<QVariantMap>())
        musics += *entry;
    map.insert(DubbingKey::musics, musics);
    map.insert(DubbingKey::filter, QStringLiteral("dubbing"));
    return map;
}

bool VideoDubbingDialog::isChanged() const
{
    return optionMap() != m_before;
}

bool VideoDubbingDialog::handleKey(const QKeyEvent &event)
{
    if (event.key() != Qt::Key_Delete || event.modifiers() != Qt::NoModifier)
        return TimeSpanEditor::handleKey(event);
    delete m_pane->list()->currentItem();
    return true;
}

void VideoDubbingDialog::on_btnAddDubbing_clicked()
{
    const QString path =
        FileChooser::chooseFile(this, {tr("音频文件"), fileDialogFilter(AudioFormatClass), {}});
    if (path.isEmpty())
        return;
    const MusicEntry music = addMusic(path);
    MediaInfoBase *reader = createMediaInfo(QFileInfo(path).suffix().toUpper(), path, this);
    connect(reader, &MediaInfoBase::got, this, [this, reader, music] {
        const auto info = reader->mediaInfo();
        reader->deleteLater();
        const bool isRead = info && info->format;
        setLength(music, isRead ? int(info->format->duration) : 0);
        if (!isRead || info->audios.isEmpty())
            showUseless(music);
    });
    connect(reader, &MediaInfoBase::error, this, [this, reader, music] {
        reader->deleteLater();
        showUseless(music);
    });
    reader->start();
}

// With what stands in the fields now; how long it is comes later for a large file.
MusicEntry VideoDubbingDialog::addMusic(const QString &path)
{
    showHint({});
    const auto music = MusicEntry::create(
        QVariantMap{{MusicKey::filePath, path},
                    {MusicKey::duration, 0},
                    {MusicKey::startTime, span().start()},
                    {MusicKey::volume, float(m_audioVolume->value()) / percent}});
    m_pane->append<DubbingFragmentItemWidget>(music);
    onChanged();
    return music;
}

void VideoDubbingDialog::setLength(const MusicEntry &music, int ms)
{
    music->insert(MusicKey::duration, ms);
    const QListWidget *list = m_pane->list();
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->data(DubbingFragmentItemWidget::entryRole).value<MusicEntry>() == music)
            rowOf(list->item(i))->refresh();
    }
    showSpan();
    onChanged();
}

void VideoDubbingDialog::showUseless(const MusicEntry &music)
{
    const QFileInfo file(music->value(MusicKey::filePath).toString());
    showHint(tr("%1 中没有可用的声音").arg(file.fileName()));
}

MusicEntry VideoDubbingDialog::currentEntry() const
{
    const QListWidgetItem *item = m_pane->list()->currentItem();
    return item ? item->data(DubbingFragmentItemWidget::entryRole).value<MusicEntry>()
                : MusicEntry();
}

DubbingFragmentItemWidget *VideoDubbingDialog::rowOf(QListWidgetItem *item) const
{
    return item ? qobject_cast<DubbingFragmentItemWidget *>(m_pane->list()->itemWidget(item))
                : nullptr;
}

void VideoDubbingDialog::onCurrentChanged(QListWidgetItem *current, QListWidgetItem *previous)
{
    if (DubbingFragmentItemWidget *row = rowOf(previous))
        row->setChecked(false);
    if (DubbingFragmentItemWidget *row = rowOf(current))
        row->setChecked(true);
    showCurrent();
}

void VideoDubbingDialog::showCurrent()
{
    if (const MusicEntry entry = currentEntry()) {
        const QSignalBlocker quietStart(&span());
        const QSignalBlocker quietVolume(m_audioVolume);
        const int start = entry->value(MusicKey::startTime).toInt();
        span().setSpan(QSharedPointer<TimeSpan>::create(TimeSpan{start, duration()}));
        m_audioVolume->setValue(percentOf(entry->value(MusicKey::volume)));
        m_scan->want(entry->value(MusicKey::filePath).toString());
    }
    showSpan();
    showLoudness();
}

void VideoDubbingDialog::store(const QVariantMap &values)
{
    const MusicEntry entry = currentEntry();
    if (!entry)
        return;
    mergeInto(*entry, values);
    if (DubbingFragmentItemWidget *row = rowOf(m_pane->list()->currentItem()))
        row->refresh();
    showSpan();
    onChanged();
}

// A file of unknown length is shown to the end of the bar.
void VideoDubbingDialog::showSpan()
{
    const MusicEntry entry = currentEntry();
    const int start = entry ? entry->value(MusicKey::startTime).toInt() : 0;
    const int length = entry ? entry->value(MusicKey::duration).toInt() : 0;
    scrubBar().setLeftValue(start);
    scrubBar().setRightValue(!entry ? 0 : length > 0 ? start + length : duration());
}

void VideoDubbingDialog::showLoudness()
{
    const auto soundOf = [this](const QString &file, float factor) {
        return DubbingModeEdit::Sound{!file.isEmpty(), m_scan->isKnown(file),
                                      m_scan->loudness(file), factor};
    };
    const float own = m_mode->isMixed() ? float(m_videoVolume->value()) / percent : 0.0F;
    m_mode->showVideo(soundOf(m_conversion.inputFile, own));
    const MusicEntry entry = currentEntry();
    m_mode->showMusic(entry ? soundOf(entry->value(MusicKey::filePath).toString(),
                                      entry->value(MusicKey::volume).toFloat())
                            : DubbingModeEdit::Sound());
}

// What is heard would no longer be what comes out.
void VideoDubbingDialog::onChanged()
{
    m_mix->stop();
    showLoudness();
}

void VideoDubbingDialog::toggleMix()
{
    if (m_mix->state() != MixPreview::Off) {
        m_mix->stop();
        return;
    }
    showHint({});
    ConvertTaskParam conversion = m_conversion;
    conversion.audioFilters = {optionMap()};
    // Of a running preview only the whole second is shown.
    const int told = player().toldPosition();
    const bool isShown = told / secondMs == position() / secondMs;
    m_mix->start(conversion, isShown ? told : position());
}

void VideoDubbingDialog::on_btnOk_clicked()
{
    accept();
}
