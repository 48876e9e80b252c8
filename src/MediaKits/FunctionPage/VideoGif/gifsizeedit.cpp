// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoGif/gifsizeedit.h"

#include "controls/repolish.h"
#include "MediaKits/FunctionPage/Framework/Rows/rowcontent.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaTasksManager/gifpreset.h"
#include "ui_gifsizeedit.h"

#include <QSignalBlocker>

#include <algorithm>

namespace {

struct Speed
{
    const char *text;
    int frameRate;
};
constexpr Speed speeds[] = {
    {QT_TRANSLATE_NOOP("GifSizeEdit", "高"), 15},
    {QT_TRANSLATE_NOOP("GifSizeEdit", "中"), 10},
    {QT_TRANSLATE_NOOP("GifSizeEdit", "低"), 5},
};
constexpr int usualSpeed = 1;
constexpr int visibleBars = 6; // pixels, on both sides together
constexpr double wholePercent = 100.0;
// What chats and forums hardly take any more.
constexpr qint64 largeGif = 20LL * 1024 * 1024;

QSize evenSize(const QSize &size)
{
    return {size.width() / 2 * 2, size.height() / 2 * 2};
}

// Sets a value without its signal; tells whether the box could take it.
bool setSilently(QSpinBox *box, int value)
{
    const QSignalBlocker blocker(box);
    box->setValue(value);
    return box->value() == value;
}

} // namespace

GifSizeEdit::GifSizeEdit(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::GifSizeEdit>())
{
    m_ui->setupUi(this);
    {
        const QSignalBlocker blocker(m_ui->cbSpeed);
        for (const Speed &speed : speeds)
            m_ui->cbSpeed->addItem(tr(speed.text), speed.frameRate);
        m_ui->cbSpeed->setCurrentIndex(usualSpeed);
    }
    const auto edited = qOverload<int>(&QSpinBox::valueChanged);
    connect(m_ui->sbW, edited, this,
            [this](int v) { follow(m_ui->sbW, v / double(m_videoSize.width())); });
    connect(m_ui->sbH, edited, this,
            [this](int v) { follow(m_ui->sbH, v / double(m_videoSize.height())); });
    connect(m_ui->sbSZScale, edited, this,
            [this](int v) { follow(m_ui->sbSZScale, v / wholePercent); });
    connect(m_ui->cbSpeed, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &GifSizeEdit::changed);
    setEnabled(false);
}

GifSizeEdit::~GifSizeEdit() = default;

void GifSizeEdit::setVideoSize(const QSize &size)
{
    m_videoSize = size;
    setEnabled(!size.isEmpty());
    setSilently(m_ui->sbW, size.width());
    setSilently(m_ui->sbH, size.height());
    m_untouched = shown();
    showSize();
}

// The results are cut off to whole numbers.
void GifSizeEdit::follow(const QSpinBox *edited, double scale)
{
    const int width = int(m_videoSize.width() * scale);
    const int height = int(m_videoSize.height() * scale);
    if (edited != m_ui->sbSZScale)
        setSilently(m_ui->sbSZScale, int(scale * wholePercent));
    const bool fitsWidth = edited == m_ui->sbW || setSilently(m_ui->sbW, width);
    const bool fitsHeight = edited == m_ui->sbH || setSilently(m_ui->sbH, height);
    QString remark;
    if (!fitsWidth)
        remark = tr("宽度已改为 %1，画面的比例变了").arg(m_ui->sbW->value());
    else if (!fitsHeight)
        remark = tr("高度已改为 %1，画面的比例变了").arg(m_ui->sbH->value());
    showSize();
    emit scaleChanged(scale);
    emit remarked(remark);
    emit changed();
}

QSharedPointer<QSize> GifSizeEdit::size() const
{
    return m_videoSize.isEmpty() || shown() == m_untouched ? QSharedPointer<QSize>()
                                                           : QSharedPointer<QSize>::create(shown());
}

QSize GifSizeEdit::shown() const
{
    return {m_ui->sbW->value(), m_ui->sbH->value()};
}

int GifSizeEdit::frameRate() const
{
    return m_ui->cbSpeed->currentData().toInt();
}

bool GifSizeEdit::isChanged() const
{
    return size() || m_ui->cbSpeed->currentIndex() != usualSpeed;
}

// The size of the file, whatever the boxes show: one left alone is the preset's, sides are even.
void GifSizeEdit::showSize()
{
    const auto asked = size();
    const auto preset = gifPreset(asked ? *asked : QSize(), frameRate());
    const QSize made = evenSize({preset->video->width, preset->video->height});
    const QSize picture = evenSize(m_videoSize.scaled(made, Qt::KeepAspectRatio));
    QStringList notes;
    if (!asked)
        notes += tr("预设大小");
    const QSize bars = made - picture;
    if (std::max(bars.width(), bars.height()) >= visibleBars)
        notes += tr("留黑边");
    QString text = MediaFacts::sizeInPixels(made.width(), made.height());
    if (!notes.isEmpty())
        text += tr("（%1）").arg(notes.join(tr("，")));
    m_ui->lblGifSize->setText(text);
}

void GifSizeEdit::showEstimate(const QString &text, bool warns)
{
    m_ui->lblGifBytes->setText(text);
    m_ui->lblGifBytes->setProperty("cls",
                                   warns ? QStringLiteral("remark") : QStringLiteral("fact"));
    repolish(m_ui->lblGifBytes);
}

void GifSizeEdit::showEstimating()
{
    showEstimate(tr("正在估算…"), false);
}

void GifSizeEdit::showBytes(qint64 bytes)
{
    if (bytes < 0)
        showEstimate(tr("无法估算"), false);
    else if (bytes > largeGif)
        showEstimate(tr("约 %1，超过 20 MB").arg(sizeText(bytes)), true);
    else
        showEstimate(tr("约 %1").arg(sizeText(bytes)), false);
}
