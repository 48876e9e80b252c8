// SPDX-License-Identifier: MIT
#include "ffmpeg/sound.h"

namespace ffmpeglauncher {

namespace {

std::string soundFormat(const OutputWords &output, const AudioEncoder &encoder)
{
    std::string options;
    if (*encoder.layouts != '\0' && !output.has({"-ac", "-ac:a"}))
        options = std::string("channel_layouts=") + encoder.layouts;
    if (*encoder.sampleRates != '\0' && !output.has({"-ar", "-ar:a"})) {
        options += options.empty() ? "" : ":";
        options += std::string("sample_rates=") + encoder.sampleRates;
    }
    return options.empty() ? options : "aformat=" + options;
}

} // namespace

void adaptSound(OutputWords *output, StreamGraph *graph)
{
    const AudioEncoder *encoder = output->audioEncoder();
    if (encoder == nullptr || graph == nullptr || output->has({"-af", "-filter", "-filter:a"}))
        return;
    const std::string format = soundFormat(*output, *encoder);
    if (format.empty())
        return;
    if (graph->givesSound())
        graph->addToSound(format);
    else
        output->insert("-af", format);
}

} // namespace ffmpeglauncher
