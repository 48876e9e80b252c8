// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/readylook.h"

const QVector<ReadyLook> &readyLooks()
{
    static const QVector<ReadyLook> looks = {
        {"原画", "filter_orgin.png", {}, {}},
        {"怀旧", "filter_huaijiu.png", {0.8F, 0.0F, 0.84F}, {0.06F, 0.01F, 0.0F}},
        {"暖色", "filter_nuanse.png", {1.09F, 0.07F, 1.03F}, {0.11F, 0.02F, 0.03F}},
        {"清透", "filter_qingtou.png", {1.09F, 0.1F, 1.09F}, {0.0F, 0.05F, 0.14F}},
        {"老友记", "filter_laoyouji.png", {1.24F, 0.0F, 1.0F}, {0.04F, 0.0F, 0.11F}},
        {"日系", "filter_rixi.png", {1.0F, 0.13F, 0.95F}, {-0.01F, 0.0F, 0.0F}},
        {"港风", "filte_gangfeng.png", {0.93F, 0.0F, 1.5F}, {0.05F, 0.05F, 0.15F}},
        {"灰度", "filter_huidu.png", {0.98F, 0.01F, 0.0F}, {0.0F, 0.01F, 0.1F}},
        {"经典", "filter_jingdian.png", {1.03F, -0.01F, 0.82F}, {0.02F, 0.01F, 0.05F}},
        {"敬请期待", "filter_orgin.png", {}, {}, false},
    };
    return looks;
}

void applyReadyLook(int index, VideoBeautyParam &beauty)
{
    const ReadyLook &look = readyLooks().at(index);
    beauty.contrast = look.cbs.contrast;
    beauty.brightness = look.cbs.brightness;
    beauty.saturation = look.cbs.saturation;
    beauty.red = look.rgb.red;
    beauty.green = look.rgb.green;
    beauty.blue = look.rgb.blue;
    beauty.filterIndex = index;
}
