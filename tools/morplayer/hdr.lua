-- SPDX-License-Identifier: MIT
-- The plain X11 output takes the numbers of a high dynamic range picture for those of a usual one
-- and shows it nearly white. Here they are converted, at a size that one core can follow: the
-- output of a graphics card converts by itself.

local wide_transfers = {hlg = true, pq = true}
local label = "morvane-hdr"

-- 203 cd/m2 is the white of a usual picture inside one of high range (ITU-R BT.2408). What is
-- brighter is pressed into the room above 0.6 of it. The picture leaves in its own size: filters
-- of an editor, which come behind this one, are in its own pixels.
local function filter(width, height)
    return "@" .. label .. ":lavfi=[" ..
        "scale=w='min(iw,960)':h='min(ih,960)':force_original_aspect_ratio=decrease" ..
        ":force_divisible_by=2:flags=bilinear," ..
        "zscale=transfer=linear:npl=203,format=gbrpf32le,zscale=primaries=bt709," ..
        "tonemap=mobius:param=0.6," ..
        "zscale=transfer=bt709:matrix=bt709:range=tv,format=yuv420p," ..
        "scale=w=" .. width .. ":h=" .. height .. ":flags=fast_bilinear]"
end

-- It comes back after a command that has taken all filters away.
local function convert()
    local is_wide = wide_transfers[mp.get_property("video-params/gamma", "")]
    if not is_wide or mp.get_property("current-vo") ~= "x11" then
        return
    end
    for _, entry in ipairs(mp.get_property_native("vf", {})) do
        if entry.label == label then
            return
        end
    end
    local source = mp.get_property_native("video-params")
    mp.commandv("vf", "pre", filter(source.w, source.h))
end

mp.observe_property("video-params/gamma", "string", convert)
mp.observe_property("vf", "native", convert)
