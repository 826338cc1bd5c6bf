#include "program/program.h"

namespace kestrune {

Program::Program(Components& components, ProgramState& programState, ToolWindows& tools)
    : state(programState),
      prompts(components.Prompts()),
      clock(components.Time()),
      audioPlayer(components.MakeAudioPlayer()),
      audioTransform(components.MakeAudioTransform()),
      audioFile(components.MakeAudioFile()),
      audioInfo(components.MakeAudioInformation()),
      playingInfo(components.MakeAudioInformation()),
      spectrum(components.MakeSpectrum()),
      options(state),
      admission(rows, *audioInfo, prompts),
      files(state, options, rows, admission, prompts),
      transport({state, rows, options, *audioFile, *audioPlayer, prompts, clock}),
      editing(state, rows, files, prompts,
              {[this] { return transport.State().PlayFile; }, [this] { transport.StopPlay(); }}),
      display(*spectrum, clock),
      feed({transport, *audioFile, *audioPlayer, *audioTransform, display, components.Events()}),
      recording(tools, prompts),
      buttons({state, rows, options, clock, transport, recording}),
      routing(state, buttons, rows, tools, prompts),
      knob(KnobGeometry{}),
      listTip(clock),
      media({options, rows, admission, files, transport, buttons, knob, *audioFile, *playingInfo,
             [&tools] { return tools.IsUserKeptAway(); }}) {
    QObject::connect(&feed, &DisplayFeed::Paused, &display, &AudioDisplay::FallToRest);
}

bool Program::Load(MainWindowSteps& window) {
    return LoadMainWindow(
        {state, options, rows, files, transport, knob, *audioFile, *audioPlayer, prompts, window});
}

} // namespace kestrune
