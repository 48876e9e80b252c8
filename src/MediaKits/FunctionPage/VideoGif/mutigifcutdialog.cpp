// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/mutigifcutdialog.h"

#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentpane.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanbinding.h"
#include "MediaKits/FunctionPage/Framework/Editors/timespanedit.h"
#include "MediaKits/FunctionPage/VideoGif/giffragmentitemwidget.h"
#include "MediaKits/FunctionPage/VideoGif/gifsample.h"
#include "MediaKits/FunctionPage/VideoGif/gifsizeedit.h"
#include "MediaKits/MediaInfo/shownpicture.h"
#include "MediaKits/Player/csvideoplayer.h"

#include <QFileInfo>
#include <QLabel>
#include <QPushButton>

namespace {

FragmentPane::Kind gifList()
{
    FragmentPane::Kind kind;
    kind.clearButton = QLatin1String("btnClr");
    return kind;
}

} // namespace

MutiGifCutDialog::MutiGifCutDialog(QWidget *parent)
    : TimeSpanEditor(parent),
      m_pane(new FragmentPane(gifList(), this)),
      m_size(new GifSizeEdit(this)),
      m_sample(new GifSample(this))
{
    setObjectName(QStringLiteral("MutiGifCutDialog"));
    setTitle(tr("GIF设置"));
    timeSection().title()->setObjectName(QStringLiteral("lblTitleCrop"));
    timeSection().title()->setText(tr("剪取片段"));
    addSection(m_size);
    m_pane->setTexts(tr("截取片段列表"),
                     tr("设定时间、尺寸和速度后，点击“截取到列表”。每个片段会成为一个 GIF。"));
    setSidePane(m_pane, m_pane->addButton());
    confirmButton()->setObjectName(QStringLiteral("btnOk"));
    connect(m_pane->addButton(), &QPushButton::clicked, this,
            &MutiGifCutDialog::on_btnFragmentAdd_clicked);
    connect(confirmButton(), &QPushButton::clicked, this, &MutiGifCutDialog::on_btnOk_clicked);
    connect(m_size, &GifSizeEdit::scaleChanged, &player(), &CSVideoPlayer::setScale);
    connect(m_size, &GifSizeEdit::remarked, this, &MutiGifCutDialog::showHint);
    connect(m_size, &GifSizeEdit::changed, this, &MutiGifCutDialog::estimate);
    connect(&span(), &TimeSpanBinding::pointChanged, this, &MutiGifCutDialog::estimate);
    connect(m_sample, &GifSample::estimated, m_size, &GifSizeEdit::showBytes);
}

void MutiGifCutDialog::setPicture(const QSize &size, double pixelAspect)
{
    TimeSpanEditor::setPicture(size, pixelAspect);
    // The pixels of a GIF are square.
    m_size->setVideoSize(squarePixelSize(size, pixelAspect));
}

void MutiGifCutDialog::setVideo(const VEncParam *video)
{
    TimeSpanEditor::setVideo(video);
    if (!video)
        m_size->setVideoSize({});
}

void MutiGifCutDialog::setDuration(int ms)
{
    TimeSpanEditor::setDuration(ms);
    estimate();
}

void MutiGifCutDialog::setConversion(const QSharedPointer<MediaInfoData> &info, GifPalette palette)
{
    m_info = info;
    m_palette = palette;
}

QSharedPointer<GifCutFragment> MutiGifCutDialog::marked() const
{
    auto fragment = QSharedPointer<GifCutFragment>::create();
    fragment->name = QFileInfo(player().fileName()).completeBaseName();
    fragment->timeRange = span().span(0);
    fragment->size = m_size->size();
    fragment->frameRate = m_size->frameRate();
    return fragment;
}

void MutiGifCutDialog::estimate()
{
    if (!m_size->isEnabled())
        return;
    ConvertTaskParam gif;
    gif.inputFile = player().fileName();
    gif.inputFormat = QFileInfo(gif.inputFile).suffix().toLower();
    gif.durationMs = duration();
    gif.sourceInfo = m_info;
    gif.palette = m_palette;
    applyFragment(*marked(), gif);
    m_size->showEstimating();
    m_sample->take(gif);
}

// What was marked and not added yet counts only as long as there is nothing else to lose.
bool MutiGifCutDialog::isChanged() const
{
    return !m_pane->isEmpty() || span().span(0) || m_size->isChanged();
}

void MutiGifCutDialog::on_btnFragmentAdd_clicked()
{
    m_pane->append<GifFragmentItemWidget>(marked());
}

void MutiGifCutDialog::on_btnOk_clicked()
{
    m_fragments = m_pane->fragments<GifCutFragment>();
    accept();
}
