// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/resultcheck.h"

#include "MediaKits/MediaTasksManager/ffmpegtask.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

// Less than that is the room of a last frame or of an encoder's padding.
constexpr qint64 smallestShortfallMs = 1000;
// A picture's last frame may stand for long, and its length gets lost.
constexpr int lastFramePermille = 200;
constexpr qint64 longestLastFrameMs = 10000;

QString tr(const char *text)
{
    return QCoreApplication::translate("ResultCheck", text);
}

QString spanText(qint64 ms)
{
    constexpr qint64 msPerSecond = 1000;
    constexpr qint64 sixty = 60;
    const qint64 seconds = (ms + msPerSecond / 2) / msPerSecond;
    const qint64 minutes = seconds / sixty;
    if (minutes == 0)
        return tr("%1 秒").arg(seconds);
    if (minutes < sixty)
        return tr("%1 分 %2 秒").arg(minutes).arg(seconds % sixty);
    return tr("%1 小时 %2 分").arg(minutes / sixty).arg(minutes % sixty);
}

qint64 shareOf(qint64 ms, int permille)
{
    constexpr qint64 thousand = 1000;
    return ms * permille / thousand;
}

// How much is missing, 0 when it is nothing to speak of or when one of the times isn't known.
qint64 shortfallMs(qint64 expectedMs, qint64 foundMs, qint64 slackMs)
{
    const qint64 missing = expectedMs - foundMs;
    return expectedMs > 0 && foundMs > 0 && missing > smallestShortfallMs + slackMs ? missing : 0;
}

class Check
{
public:
    Check(const ExpectedResult &expected, const MediaInfoData *result, const FFmpegAccount &account)
        : m_expected(expected),
          m_account(account),
          m_format(result && result->format ? *result->format : MediaFormatInfo()),
          m_content(result ? result->content : MediaContent())
    {
        if (result && !result->audios.isEmpty())
            m_sound = *result->audios.first();
        m_hasPicture = !account.isEmpty() && (m_content.hasPicture || account.pictureKb > 0);
        m_hasSound = !account.isEmpty() && (m_content.hasSound || account.soundKb > 0);
    }

    ResultVerdict verdict()
    {
        if (isEmpty())
            return {emptyText(), {}, {}};
        remarkIf(m_expected.hasPicture && !m_hasPicture, tr("没有画面"));
        remarkIf(m_expected.hasSound && !m_hasSound, tr("没有声音"));
        remarkIf(m_account.coverLost, tr("封面图片无法解码，画面为黑色"));
        checkTimes();
        checkShape();
        remarkIf(m_account.damagedPlaces > 0,
                 tr("源文件有 %1 处损坏").arg(m_account.damagedPlaces));
        return {{}, m_remarks, {}};
    }

private:
    void remarkIf(bool isSo, const QString &text)
    {
        if (isSo)
            m_remarks += text;
    }

    bool isEmpty() const
    {
        const bool hasWanted =
            (m_expected.hasPicture && m_hasPicture) || (m_expected.hasSound && m_hasSound);
        const bool knowsWanted = m_expected.hasPicture || m_expected.hasSound;
        return knowsWanted ? !hasWanted : !m_hasPicture && !m_hasSound;
    }

    QString emptyText() const
    {
        if (m_expected.hasPicture == m_expected.hasSound)
            return tr("结果中没有画面和声音");
        return m_expected.hasPicture ? tr("结果中没有画面") : tr("结果中没有声音");
    }

    void checkTimes();
    void checkShape();

    const ExpectedResult &m_expected;
    const FFmpegAccount &m_account;
    MediaFormatInfo m_format;
    MediaContent m_content;
    AEncParam m_sound;
    bool m_hasPicture = false;
    bool m_hasSound = false;
    QStringList m_remarks;
};

// Where the whole is too short, its parts are as well.
void Check::checkTimes()
{
    const qint64 foundMs = std::max(m_format.duration, m_account.writtenMs);
    const auto roundingMs = [this](qint64 ms) { return shareOf(ms, m_expected.slackPermille); };
    const qint64 missing =
        shortfallMs(m_expected.lengthMs, foundMs, roundingMs(m_expected.lengthMs));
    if (missing > 0) {
        m_remarks += tr("比%1短 %2").arg(m_expected.measure, spanText(missing));
        return;
    }
    const qint64 lastFrameMs =
        std::min(shareOf(m_expected.pictureEndMs, lastFramePermille), longestLastFrameMs);
    const qint64 picture = shortfallMs(m_expected.pictureEndMs, m_content.pictureEndMs,
                                       std::max(lastFrameMs, roundingMs(m_expected.pictureEndMs)));
    remarkIf(picture > 0, tr("画面比%1短 %2").arg(m_expected.measure, spanText(picture)));
    const qint64 sound =
        shortfallMs(m_expected.soundEndMs, m_content.soundEndMs, roundingMs(m_expected.soundEndMs));
    remarkIf(sound > 0, tr("声音比%1短 %2").arg(m_expected.measure, spanText(sound)));
    remarkIf(picture + sound == 0 &&
                 (m_account.inputCutOff || (m_expected.isSourceCutOff && m_expected.lengthMs == 0)),
             tr("源文件不完整"));
}

void Check::checkShape()
{
    const QSize found = m_content.pictureSize;
    const QSize asked = m_expected.pictureSize;
    remarkIf(!found.isEmpty() && !asked.isEmpty() && found != asked,
             tr("画面尺寸为 %1×%2，而不是 %3×%4")
                 .arg(found.width())
                 .arg(found.height())
                 .arg(asked.width())
                 .arg(asked.height()));
    remarkIf(m_sound.sampleRate > 0 && m_expected.sampleRate > 0 &&
                 m_sound.sampleRate != m_expected.sampleRate,
             tr("采样率为 %1 Hz，而不是 %2 Hz").arg(m_sound.sampleRate).arg(m_expected.sampleRate));
    remarkIf(m_sound.channel > 0 && m_expected.channels > 0 &&
                 m_sound.channel != m_expected.channels,
             tr("声道数为 %1，而不是 %2").arg(m_sound.channel).arg(m_expected.channels));
}

} // namespace

ResultVerdict checkResult(const ExpectedResult &expected, const MediaInfoData *result,
                          const FFmpegAccount &account)
{
    return Check(expected, result, account).verdict();
}

ResultVerdict checkMade(const ExpectedResult &expected, const MediaInfoData *result,
                        const FFmpegTask &maker)
{
    const FFmpegAccount account = maker.account();
    ResultVerdict verdict = checkResult(confirmed(expected, account), result, account);
    verdict.report = maker.report();
    return verdict;
}
