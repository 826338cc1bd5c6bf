"""A private screen, a private sound server and the real program on them, driven by real keys and mouse events.

Every process that is started here is ended by its id, also when the test fails or is killed (the kernel ends them with
this one). Nothing touches the user's own screen, sound or files.
"""

import contextlib
import ctypes
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
sys.path.insert(0, os.path.join(ROOT, "tools"))

import native_playlist  # noqa: E402  (found through the line above)

WINDOW_WIDTH, WINDOW_HEIGHT = 393, 385
LIST_EMPTY_PLACE = (200, 355)
MAIN_WINDOW_TITLE = "^Kestrune"
PR_SET_PDEATHSIG = 1
_LIBC = ctypes.CDLL(None)
# How much longer than on an idle machine of two cores things take; test.sh measures it once for a run.
SLOWNESS = max(1.0, float(os.environ.get("KESTRUNE_SLOWNESS", "2")))
# A wait ends with a failure only after that many times what is told: a machine may become busier after it was measured.
PATIENCE = 4 * SLOWNESS
# A take of a listening test in which the server had nothing to play for want of the processor says nothing.
MOST_TAKES = 8
RAN_DRY = re.compile(r"(?:Implicit|Actual) underrun of ")
_disturbances = []  # of this take


class Failure(AssertionError):
    """What a test saw is not what it should see."""


def check(condition, message):
    if not condition:
        raise Failure(message)


def wait_for(condition, what, timeout_s=10.0, step_s=0.02):
    """The first true value of condition(); Failure when there is none in time. `timeout_s` is for an idle machine."""
    end = time.monotonic() + timeout_s * PATIENCE
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Failure(f"waited {timeout_s * PATIENCE:g} s in vain for {what}")
        time.sleep(step_s)


def _end_with_parent():
    _LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def start(command, env, log=None, **options):
    """A child process that dies with this one. `log` is a path for its output."""
    output = open(log, "ab") if log else subprocess.DEVNULL
    try:
        return subprocess.Popen(command, env=env, stdin=options.pop("stdin", subprocess.DEVNULL),
                                stdout=options.pop("stdout", output), stderr=output, preexec_fn=_end_with_parent,
                                **options)
    finally:
        if log:
            output.close()


def end(process, grace_s=3.0):
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(grace_s)
        except subprocess.TimeoutExpired:
            process.kill()
    process.wait()


class Stage:
    """A folder, an X server with a window manager and, if asked for, a sound server whose sink a reader of ours hears.

    with Stage() as stage:
        program = stage.run_program(sys.argv[1])
    """

    def __init__(self, sound=True, screen="1280x1024"):
        self._with_sound = sound
        self._screen = screen
        self._stack = contextlib.ExitStack()

    def __enter__(self):
        try:
            self._open()
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, kind, error, trace):
        if kind is not None:
            self._show_what_happened()
        self._note_disturbance()
        self.close()

    def close(self):
        self._stack.close()

    def _open(self):
        self.folder = tempfile.mkdtemp(prefix="kestrune-e2e-")
        self._stack.callback(shutil.rmtree, self.folder, ignore_errors=True)
        self.home = os.path.join(self.folder, "program-home")
        self.runtime = os.path.join(self.folder, "runtime")
        for folder in (self.home, self.runtime):
            os.mkdir(folder, 0o700)
        # Of the surroundings only what every program needs: the user's sound server, session bus, style and
        # language must not reach in.
        kept = ("PATH", "LD_LIBRARY_PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS")
        self.env = {name: os.environ[name] for name in kept if name in os.environ}
        self.env.update({name: value for name, value in os.environ.items() if name.startswith("KESTRUNE_RUN")})
        self.env.update(HOME=self.folder, XDG_RUNTIME_DIR=self.runtime, KESTRUNE_HOME=self.home, LC_ALL="C.UTF-8",
                        XDG_CONFIG_HOME=os.path.join(self.folder, "config"),
                        XDG_DATA_HOME=os.path.join(self.folder, "data"),
                        DBUS_SESSION_BUS_ADDRESS="disabled:", QT_QPA_PLATFORM="xcb", NO_AT_BRIDGE="1")
        self._open_screen()
        if self._with_sound:
            self._open_sound()
        self._skip_first_run_dialog()

    def child(self, command, **options):
        """A child process of the stage, ended with it."""
        process = start(command, self.env, **options)
        self._stack.callback(end, process)
        return process

    def log(self, name):
        return os.path.join(self.folder, name + ".log")

    def _open_screen(self):
        read_end, write_end = os.pipe()
        with os.fdopen(read_end) as answer:
            # Without -noreset the server drops everybody, the window manager too, when its last client leaves.
            server = self.child(["Xvfb", "-displayfd", str(write_end), "-screen", "0", self._screen + "x24", "-dpi", "96",
                                 "-nolisten", "tcp", "-noreset"], log=self.log("xvfb"), pass_fds=(write_end,))
            os.close(write_end)
            number = answer.readline().strip()
        check(number.isdigit(), f"Xvfb gave no display, exit code {server.poll()}")
        self.env["DISPLAY"] = ":" + number
        # The first made-up key changes the server's keyboard map, and a window manager that is told so takes its keys
        # anew; a key in between would be lost. So that one is pressed while there is no window manager yet.
        self.key("shift")
        self.child(["openbox"], log=self.log("openbox"))
        wait_for(lambda: "window id" in self.ask(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"]), "the window manager")

    def _open_sound(self):
        pipe = os.path.join(self.folder, "heard.pipe")
        os.mkfifo(pipe)
        self.heard_path = os.path.join(self.folder, "heard.raw")
        self.child([sys.executable, os.path.join(HERE, "sound_reader.py"), pipe, self.heard_path],
                   log=self.log("reader"))
        wait_for(lambda: os.path.exists(self.heard_path), "the reader of what is played")
        # The log tells each time when a stream had nothing more to play.
        self.child(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--realtime=no", "--high-priority=no",
                    "--disable-shm=yes", "--log-target=stderr", "--log-level=debug", "--log-time=1",
                    "-L", "module-native-protocol-unix",
                    "-L", f"module-pipe-sink sink_name=out file={pipe} format=s16le rate=44100 channels=2"],
                   log=self.log("pulseaudio"))
        self.env["PULSE_SERVER"] = "unix:" + os.path.join(self.runtime, "pulse", "native")
        wait_for(lambda: "out" in self.ask(["pactl", "list", "short", "sinks"]), "the sound server")

    def heard_seconds(self):
        """The clock of what is played: it goes as far as the reader has read."""
        return os.path.getsize(self.heard_path) / (Capture.FRAME_BYTES * Capture.RATE_HZ)

    def hear(self, seconds):
        """Lets this much be played, sound or silence."""
        end_s = self.heard_seconds() + seconds
        wait_for(lambda: self.heard_seconds() >= end_s, f"{seconds:g} s of sound or silence", seconds + 10)

    def _note_disturbance(self):
        log = self.log("pulseaudio")
        if os.path.exists(log):
            with open(log, errors="replace") as file:
                times = len(RAN_DRY.findall(file.read()))
            if times:
                _disturbances.append(f"the sound server ran dry {times} times")

    def _skip_first_run_dialog(self):
        """The file whose second number says that the update dialog was already shown once."""
        record = bytearray(30004)
        record[30002:30004] = b"\xff\xff"
        with open(os.path.join(self.home, "associateupdate.src"), "wb") as file:
            file.write(record)

    def ask(self, command):
        """What a command prints, empty when it fails."""
        answer = subprocess.run(command, env=self.env, stdin=subprocess.DEVNULL, capture_output=True, text=True)
        return answer.stdout if answer.returncode == 0 else ""

    def xdotool(self, *words):
        return self.ask(["xdotool", *map(str, words)]).strip()

    def windows(self, title, visible=True):
        """Ids of the windows whose title matches, oldest first."""
        only = ["--onlyvisible"] if visible else []
        return [int(word) for word in self.xdotool("search", *only, "--name", title).split()]

    def window_title(self, window):
        return self.xdotool("getwindowname", window)

    def active_window(self):
        answer = self.xdotool("getactivewindow")
        return int(answer) if answer else 0

    def key(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def type_text(self, text, delay_ms=2):
        self.xdotool("type", "--delay", delay_ms, "--", text)

    def picture_sum(self, window, left, top, width, height):
        """A sum over the pixels of a part of a window, equal for equal pictures."""
        picture = self.folder + "/part.png"
        self.ask(["import", "-silent", "-window", str(window), "-crop", f"{width}x{height}+{left}+{top}", "+repage",
                  picture])
        return self.ask(["identify", "-format", "%#", picture])

    def screenshot(self, path, window="root"):
        subprocess.run(["import", "-silent", "-window", str(window), path], env=self.env, stdin=subprocess.DEVNULL,
                       capture_output=True)

    def _show_what_happened(self):
        folder = os.environ.get("KESTRUNE_E2E_KEEP")
        if folder:
            os.makedirs(folder, exist_ok=True)
            name = "_".join([os.path.splitext(os.path.basename(sys.argv[0]))[0], *sys.argv[2:]])
            self.screenshot(os.path.join(folder, name + ".png"))
            for file in os.listdir(self.folder):
                if file.endswith((".log", ".raw")):
                    shutil.copy(os.path.join(self.folder, file), os.path.join(folder, name + "-" + file))
        program_log = self.log("program")
        if os.path.exists(program_log):
            with open(program_log, errors="replace") as file:
                text = file.read()[-3000:]
            if text:
                print("The program wrote:\n" + text, file=sys.stderr)

    def capture(self):
        return Capture(self)

    def run_program(self, path, *arguments, wait=True):
        return Program(self, path, arguments, wait)

    @property
    def default_playlist(self):
        return os.path.join(self.home, "Default.ksl")


class Program:
    """The program under test, its main window active."""

    def __init__(self, stage, path, arguments, wait):
        self.stage = stage
        self.process = stage.child([path, *arguments], log=stage.log("program"))
        self.window = 0
        if wait:
            self.await_window()

    def await_window(self, timeout_s=20.0):
        def shown():
            check(self.process.poll() is None, f"the program ended by itself with {self.process.poll()}")
            found = self.stage.windows(MAIN_WINDOW_TITLE)
            return found and found[0]
        self.window = wait_for(shown, "the main window", timeout_s)
        self.stage.xdotool("windowactivate", "--sync", self.window)
        wait_for(lambda: self.stage.active_window() == self.window, "the main window to be active")

    def place(self):
        """Where the window's inside stands on the screen."""
        answer = self.stage.xdotool("getwindowgeometry", "--shell", self.window)
        values = dict(re.findall(r"^(X|Y|WIDTH|HEIGHT)=(-?\d+)$", answer, re.MULTILINE))
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def pointer_to(self, x, y):
        self.stage.xdotool("mousemove", "--window", self.window, x, y)

    def click(self, x, y):
        self.pointer_to(x, y)
        self.stage.xdotool("click", 1)

    def drag(self, from_point, to_point, steps=6):
        """From one point of the screen to another, by a few moves as a hand does."""
        self.stage.xdotool("mousemove", *from_point)
        self.stage.xdotool("mousedown", 1)
        for step in range(1, steps + 1):
            x, y = (a + (b - a) * step // steps for a, b in zip(from_point, to_point))
            self.stage.xdotool("mousemove", x, y)
            time.sleep(0.02)
        self.stage.xdotool("mouseup", 1)

    def menu(self, letter):
        """An entry of the Play menu by its letter: s Start, t Stop."""
        self._menu_keys("alt+p", letter)

    def pause_or_go_on(self):
        """The second entry of the Play menu, whatever it is called now."""
        self._menu_keys("alt+p", "Down", "Down", "Return")

    def _menu_keys(self, first, *others):
        self.stage.key(first)
        for key in others:
            time.sleep(0.15)
            self.stage.key(key)

    def volume_full(self):
        """A click gives the knob the focus, End turns it to the end."""
        self.click(195 + 28, 165 + 14)
        time.sleep(0.1)
        self.stage.key("End")
        time.sleep(0.1)

    def add_files(self, paths):
        """Through the file dialog: into the folder first, then the names in quotes. All are of one folder."""
        self.stage.key("Insert")
        wait_for(lambda: self.stage.active_window() not in (0, self.window), "the file dialog")
        self.stage.type_text(os.path.dirname(paths[0]) + "/")
        self.stage.key("Return")
        self.stage.type_text(" ".join(f'"{os.path.basename(path)}"' for path in paths))
        self.stage.key("Return")

    def sort_by_title(self):
        """The list's own menu: "Sort by...", its second entry."""
        self._list_menu("Down", "Right", "Down", "Return")

    def toggle_duration_column(self):
        """The list's own menu: "Playlist Items", its second entry."""
        self._list_menu("Down", "Down", "Right", "Down", "Return")

    def _list_menu(self, *keys):
        self.pointer_to(*LIST_EMPTY_PLACE)
        self.stage.xdotool("click", 3)
        time.sleep(0.15)
        # One by one: a submenu opens only when the program has come round to it.
        for key in keys:
            self.stage.key(key)
            time.sleep(0.05)

    def kill(self):
        with contextlib.suppress(ProcessLookupError):
            self.process.kill()
        self.process.wait()

    def close(self, timeout_s=10.0):
        """By the window manager, as a user does; the exit code."""
        self.stage.xdotool("windowactivate", "--sync", self.window)
        self.stage.key("alt+F4")
        try:
            return self.process.wait(timeout_s * PATIENCE)
        except subprocess.TimeoutExpired as error:
            raise Failure("the program did not close") from error


class Capture:
    """What the sink plays, as 16-bit little-endian stereo at 44,100 Hz, from now on."""

    FRAME_BYTES = 4
    RATE_HZ = 44100
    ON_ITS_WAY_S = 0.15  # what the server, the pipe and the reader hold together, and a little more

    def __init__(self, stage):
        self._stage = stage
        self._begin = self._frame_bytes_read()

    def _frame_bytes_read(self):
        return os.path.getsize(self._stage.heard_path) // self.FRAME_BYTES * self.FRAME_BYTES

    def seconds(self):
        return (self._frame_bytes_read() - self._begin) / (self.FRAME_BYTES * self.RATE_HZ)

    def data(self):
        """All that was captured so far, in whole frames."""
        end = self._frame_bytes_read()
        with open(self._stage.heard_path, "rb") as file:
            file.seek(self._begin)
            return file.read(end - self._begin)

    def await_sound(self):
        """The moment, in seconds of this capture, when the first sound was heard, waiting for it."""
        def first():
            data = self.data()
            silent = (len(data) - len(data.lstrip(b"\0"))) // self.FRAME_BYTES
            return silent < len(data) // self.FRAME_BYTES and (silent + 1,)
        return wait_for(first, "any sound")[0] / self.RATE_HZ

    def stop(self):
        self._stage.hear(self.ON_ITS_WAY_S)
        return self.data()


def run(test):
    """Runs test(program path) from the command line and tells ctest how it went."""
    if len(sys.argv) < 2:
        sys.exit(f"usage: {sys.argv[0]} PROGRAM")
    # A test that ctest ends early unwinds, so that what it started ends with it.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    for take in range(1, MOST_TAKES + 1):
        _disturbances.clear()
        try:
            test(os.path.abspath(sys.argv[1]), *sys.argv[2:])
            break
        except Failure as failure:
            if not _disturbances:
                sys.exit(f"FAILED: {failure}")
            told = ", ".join(_disturbances)
            if take == MOST_TAKES:
                sys.exit(f"FAILED: no take of {MOST_TAKES} was undisturbed; in the last one {told}: {failure}")
            print(f"take {take} is void, {told}: {failure}", flush=True)
    print("passed")
