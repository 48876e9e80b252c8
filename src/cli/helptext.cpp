// SPDX-License-Identifier: MIT
#include "cli/helptext.h"

#include "cli/textvalues.h"

#include <QCoreApplication>

QString helpText()
{
    return QCoreApplication::translate(
               "CommandLine",
               "用法：\n"
               "  morvane-cli categories [--json]\n"
               "  morvane-cli presets [--category TITLE] [--json]\n"
               "  morvane-cli probe FILE… [--reader auto|ffprobe|mediainfo] [--json]\n"
               "  morvane-cli convert FILE… --preset ID [--out DIR] [--name BASE] [--from T] [--to "
               "T]\n"
               "              [--crop X,Y,W,H] [--speed 0..9] [--beauty key=value,…]\n"
               "              [--watermark JSON]… [--delogo JSON]…\n"
               "              [--dub JSON]… [--film-volume 0..2] [--mute-film]\n"
               "              [--jobs N] [--dry-run] [--strict] [--json]\n"
               "  morvane-cli gif FILE… [--size WxH] [--fps N] [--quality] [--from T] [--to T]\n"
               "              [--out DIR] [--name BASE] [--jobs N] [--dry-run] [--strict] "
               "[--json]\n"
               "  morvane-cli merge FILE… --preset ID --name BASE [--out DIR] [--strict] [--json]\n"
               "  morvane-cli shots FILE… (--at T,T,… | --every T [--from T] [--to T]) [--format "
               "png|jpg|bmp]\n"
               "              [--scale 0..5] [--long | --sheet COLUMNS] [--out DIR] [--json]\n"
               "  morvane-cli record [--area X,Y,W,H | --window ID] [--sound system|mic|all|none]\n"
               "              [--seconds N] [--out DIR] [--json]\n"
               "\n"
               "T 为秒数或 hh:mm:ss[.zzz]。--speed 1 最快，9 最慢，0 由编码器决定。\n"
               "--beauty 的键：contrast brightness saturation red green blue rotate volume speed\n"
               "reverse vflip hflip；filter 为现成的滤镜：%1。\n"
               "--watermark 加一个水印：{\"image\":\"logo.png\",\"rect\":[X,Y,W,H],"
               "\"opacity\":0.8,\"from\":0,\"to\":5}\n"
               "或 {\"text\":\"…\",\"rect\":[X,Y],\"font\":\"…\",\"size\":36,"
               "\"color\":\"#ffffff\"}；--delogo 抹去 {\"rect\":[X,Y,W,H]}。\n"
               "rect 为画面中的像素，from 和 to 为秒数，可省略。\n"
               "--dub 加一段配乐：{\"file\":\"song.mp3\",\"start\":3.5,\"volume\":0.8}，start "
               "为影片中的秒数，\n"
               "volume 为 0 到 2；--mute-film 去掉原声。\n"
               "gif 默认 240x160、每秒 10 帧；--quality 为每个 GIF 单独取色。以 - "
               "开头的文件名写在 -- 之后。\n"
               "record 录到 --seconds 为止，或按 Ctrl+C 结束；ID 为窗口的 X11 编号。\n"
               "成品路径写到标准输出，每行一个。全部完成返回 0，有失败返回 1，用法错误返回 2。\n"
               "成品与要求不完全相符时，提示写到标准错误；--strict 使提示也返回 1。\n")
        .arg(readyLookNames().join(QLatin1Char(' ')));
}
