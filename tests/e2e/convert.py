#!/usr/bin/env python3
"""A playlist of three converted into every format by mouse and keys; another run stopped in the middle."""

import os
import time

import access_tree
import converter_window
import harness
import native_playlist
import sound

SECONDS = 3
LONG_SECONDS = 240
TEMPLATE = "u-law template.wav"


def write_sources(folder):
    """A WAV, an MP3 and an Ogg, none like another."""
    paths = [os.path.join(folder, name) for name in ("first song.wav", "second.mp3", "third.ogg")]
    for seed, path in enumerate(paths):
        wav = os.path.join(folder, f"{seed}.pcm.wav")
        sound.write_wav(wav, sound.noise(SECONDS, seed))
        if path.endswith(".wav"):
            os.rename(wav, path)
        else:
            sound.run_tool("ffmpeg", "-v", "error", "-i", wav, path)
            os.remove(wav)
    return paths


def check_outputs(folder, sources):
    wanted = {os.path.splitext(os.path.basename(source))[0] + ending
              for source in sources for ending in (*converter_window.OUTPUTS, "_ACM.wav")}
    harness.check(set(os.listdir(folder)) == wanted, f"the folder holds {sorted(os.listdir(folder))}")
    for source in sources:
        head = os.path.join(folder, os.path.splitext(os.path.basename(source))[0])
        for ending, codec in (*converter_window.OUTPUTS.items(), ("_ACM.wav", "pcm_mulaw")):
            path = head + ending
            if codec is None:
                # 44,100 samples a second, 4 bits each of most, 5 of G.723, 8 of two channels in A-law.
                bits = {".g723": 5, "_ULAW.raw": 16}.get(ending, 4)
                length_s = os.path.getsize(path) * 8 / bits / sound.RATE_HZ
            else:
                found = converter_window.codec_of(path)
                harness.check(found == codec, f"{path} is {found}")
                length_s = converter_window.length_s(path)
            harness.check(abs(length_s - SECONDS) < 0.2, f"{path} is {length_s:.2f} s long")


def choose_template(window, folder):
    path = os.path.join(folder, TEMPLATE)
    sound.run_tool("ffmpeg", "-v", "error", "-f", "lavfi", "-i", "sine=duration=0.1:sample_rate=22050", "-c:a", "pcm_mulaw",
                   path)
    window.click("check box", "Format settings")
    known = window.tree.paths()
    window.click("push button", "Take the format of a WAV file.*")
    window.tree.await_window(known, "the choice of a template")
    window.stage.type_text(path)
    window.stage.key("Return")
    harness.wait_for(lambda: "mu-Law, 22,050 Hz" in window.text_of("ACM format"), "the template's text")
    window.click("check box", "Format settings")


def check_all_formats(window, folder, sources):
    window.open("Convert All Files")
    out = os.path.join(folder, "out")
    os.mkdir(out)
    window.type_folder("Output folder", out)
    choose_template(window, folder)
    for name in converter_window.FORMATS:
        window.tick(f"Write {name}")
    window.start()
    window.answer("Done!", "Return")
    harness.check("39 Files Created/3 Files Converted(Total 3)" in window.names(), "the counts are not told")
    check_outputs(out, sources)
    window.close()


def check_stop(window, folder):
    """Two long files into one format: Stop in the middle of the first, no next file."""
    out = os.path.join(folder, "stopped")
    os.mkdir(out)
    window.open("Open Converting Window")
    window.type_folder("Output folder", out)
    window.type_folder("Input folder", os.path.join(folder, "long"))
    window.click("push button", "Tick all files")
    window.tick("Write OGG")
    window.start()
    first = os.path.join(out, "a.ogg")
    harness.wait_for(lambda: os.path.exists(first) and os.path.getsize(first) > 20000, "some of the first file")
    window.stop()
    window.answer("Do you want to skip current file?", "alt+y")
    window.answer("Do you want to convert the next file?", "alt+n")
    window.answer("Done!", "Return")
    harness.check(os.listdir(out) == ["a.ogg"], f"the folder holds {os.listdir(out)}")
    length_s = converter_window.length_s(first)
    harness.check(0.5 < length_s < LONG_SECONDS - 1, f"the stopped file is {length_s:.1f} s long")
    harness.check(converter_window.codec_of(first) == "vorbis", "the stopped file is not whole")
    window.close()


def test(program_path):
    with harness.Stage() as stage:
        sources = write_sources(stage.folder)
        os.mkdir(os.path.join(stage.folder, "long"))
        for name in ("a.wav", "b.wav"):
            sound.write_wav(os.path.join(stage.folder, "long", name), sound.noise(10, 7) * (LONG_SECONDS // 10))
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path) for path in sources])
        before = [open(path, "rb").read() for path in sources]
        tree = access_tree.Tree(stage)
        program = stage.run_program(program_path)
        tree.follow(program.process.pid)
        window = converter_window.ConverterWindow(stage, program, tree)
        check_all_formats(window, stage.folder, sources)
        check_stop(window, stage.folder)
        harness.check([open(path, "rb").read() for path in sources] == before, "a source was changed")
        harness.check(program.close() == 0, "the program did not end well")


if __name__ == "__main__":
    harness.run(test)
