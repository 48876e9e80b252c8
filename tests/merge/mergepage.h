// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/VideoMerge/mediamergefunctionpage.h"
#include "MediaKits/FunctionPage/VideoMerge/mediamergelistitemwidget.h"
#include "support/pagetest.h"

constexpr int endLimitMs = 90000;
constexpr quint32 mp4Small = 1003005;

/// The merge page, shown.
class MergePage : public PageTest<MediaMergeFunctionPage>
{
public:
    explicit MergePage(quint32 preset = mp4Small) : PageTest(FunctionSection::merger, preset) {}

    MediaMergeListItemWidget *input(int index) const
    {
        return qobject_cast<MediaMergeListItemWidget *>(rowWidget(index));
    }
    MediaTask *task() const
    {
        return list()->item(0)->data(MergeTaskRole).value<QSharedPointer<MediaTask>>().data();
    }
    QString buttonText() const { return child<QPushButton>(*page, "btnMerge")->text(); }
    bool isShown(int index, const char *name) const
    {
        return child(*rowWidget(index), name)->isVisible();
    }
    /// Which of a row's buttons and connectors are seen, as "ud" and "UD".
    QString moves(int index) const
    {
        const QPair<const char *, char> parts[] = {
            {"btnUp", 'u'}, {"btnDown", 'd'}, {"lblCondup", 'U'}, {"lblCondown", 'D'}};
        QString seen;
        for (const auto &part : parts) {
            if (isShown(index, part.first))
                seen += QLatin1Char(part.second);
        }
        return seen;
    }
    /// Presses the start and waits for the end's dialog, which it closes by a button.
    bool merge(const char *dialogClass, const char *button)
    {
        bool ended = false;
        whenModal(dialogClass, [&](QWidget &dialog) {
            shoot(dialog, dialogClass);
            ended = true;
            press(dialog, button);
        });
        press(*page, "btnMerge");
        return QTest::qWaitFor([&] { return ended; }, endLimitMs);
    }
};
