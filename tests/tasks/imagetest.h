// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/MediaTasksManager/grouptaskfactory.h"
#include "MediaKits/MediaTasksManager/mutiimagetask.h"
#include "tasks/chainrun.h"

#include <QImage>
#include <QtTest>

/// A test of pictures of a clip of 320x240, made by the real ffmpeg.
class ImageTest : public QObject
{
    Q_OBJECT

protected:
    /// What a task for as many pictures, one of each second, is told.
    QVariantMap wanted(const QString &outputDir, int count) const
    {
        QVariantList images;
        for (int i = 0; i < count; ++i)
            images += QVariantMap{{"pos"_s, 1000 * i}, {"scale"_s, 0.5F}};
        return {{"inputUrl"_s, m_clip},
                {"outputDir"_s, outputDir},
                {"baseName"_s, "a"_s},
                {"format"_s, "png"_s},
                {"images"_s, images}};
    }

    QString m_clip;
    std::unique_ptr<TestFolder> m_folder;

protected slots:
    void init() { m_folder = std::make_unique<TestFolder>(); }

private slots:
    void initTestCase()
    {
        m_clip = m_media.filePath("片 %d.clip.mp4"_s);
        ClipPlan plan;
        plan.seconds = 3;
        makeClip(m_clip, plan);
    }

private:
    QTemporaryDir m_media;
};
