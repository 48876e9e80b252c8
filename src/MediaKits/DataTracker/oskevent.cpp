// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/oskevent.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr OskEvent events[] = {
    {1, "shouye_page", "show", "shouye_page_view_shouye", "首页展示"},
    {2, "shouye_page", "show", "shouye_page_view_shouyetanchuang", "首页弹窗展示"},
    {3, "shouye_page", "click", "shouye_page_click_shouyetanchuangdianji", "首页弹窗点击"},
    {4, "shouye_page", "click", "shouye_page_click_shouyetanchuangguanbi", "首页弹窗关闭"},
    {5, "denglu_page", "show", "shouye_page_view_denglu", "用户登录弹窗展示"},
    {6, "denglu_page", "custom", "shouye_page_custom_dengluchenggong", "用户登录弹窗成功"},
    {7, "denglu_page", "click", "shouye_page_click_dengluguanbi", "用户登录弹窗关闭"},
    {8, "denglu_page", "click", "shouye_page_click_dengluzhuce", "首页点击登录/注册"},
    {13, "shipinzhuanhuan_page", "show", "shipinzhuanhuan_page_view_shipinzhuanhuan",
     "视频转换展示"},
    {14, "shipinzhuanhuan_page", "click", "shipinzhuanhuan_page_click_zhuanhuan",
     "视频转换点击转换"},
    {15, "shipinyasuo_page", "show", "shipinyasuo_page_view_shipinyasuo", "视频压缩展示"},
    {16, "shipinyasuo_page", "click", "shipinyasuo_page_click_zhuanhuan", "视频压缩点击转换"},
    {17, "shipinjianji_page", "show", "shipinjianji_page_view_shipinjianji", "视频剪辑展示"},
    {18, "shipinjianji_page", "click", "shipinjianji_page_click_zhuanhuan", "视频剪辑点击转换"},
    {19, "shipinhebing_page", "show", "shipinhebing_page_view_shipinhebing", "视频合并展示"},
    {20, "shipinhebing_page", "click", "shipinhebing_page_click_zhuanhuan", "视频合并点击转换"},
    {21, "shipinmeihua_page", "show", "shipinmeihua_page_view_shipinmeihua", "视频美化展示"},
    {22, "shipinmeihua_page", "click", "shipinmeihua_page_click_zhuanhuan", "视频美化点击转换"},
    {23, "shipingif_page", "show", "shipingif_page_view_shipingif", "视频转GIF展示"},
    {24, "shipingif_page", "click", "shipingif_page_click_zhuanhuan", "视频转GIF点击转换"},
    {25, "shipinpeiyue_page", "show", "shipinpeiyue_page_view_shipinpeiyue", "视频配乐展示"},
    {26, "shipinpeiyue_page", "click", "shipinpeiyue_page_click_zhuanhuan", "视频配乐点击转换"},
    {27, "shipinjietu_page", "show", "shipinjietu_page_view_shipinjietu", "视频截图展示"},
    {28, "shipinjietu_page", "click", "shipinjietu_page_click_zhuanhuan", "视频截图点击转换"},
    {29, "shipinshuiyin_page", "show", "shipinshuiyin_page_view_shipinshuiyin", "视频水印展示"},
    {30, "shipinshuiyin_page", "click", "shipinshuiyin_page_click_zhuanhuan", "视频水印点击转换"},
    {31, "yinpinzhuanhuan_page", "show", "yinpinzhuanhuan_page_view_yinpinzhuanhuan",
     "音频转换展示"},
    {32, "yinpinzhuanhuan_page", "click", "yinpinzhuanhuan_page_click_zhuanhuan",
     "音频转换点击转换"},
    {33, "TRANSFER_OUT_PAGE", "click", "user_crux_behavior", "用户关键行为"},
    {40, "benkui_page", "custom", "benkui_page_custom_penkui", "软件奔溃"},
    {50, "", "custom", "zhuanhuanshibai", "转换失败"},
};

} // namespace

const OskEvent *findOskEvent(int id)
{
    const auto row = std::find_if(std::begin(events), std::end(events),
                                  [id](const OskEvent &event) { return event.id == id; });
    return row == std::end(events) ? nullptr : row;
}
