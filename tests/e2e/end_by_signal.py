#!/usr/bin/env python3
"""Ended by a signal, as by `kill`, a closed terminal or the end of a session, the program keeps the list as it stands: with
moved rows, while a file plays, while a dialog is open, and in the middle of a conversion. One row's folder and name have more bytes than their fields."""

import os
import signal

import access_tree
import converter_window
import harness
import native_playlist
import sound


def make_rows(stage):
    folder = os.path.join(stage.folder, "\u97f3\u697d" * 35)
    os.mkdir(folder)
    paths = [os.path.join(stage.folder, "one.wav"), os.path.join(folder, "\u66f2" * 60 + ".wav"),
             os.path.join(stage.folder, "three.wav")]
    for seed, path in enumerate(paths):
        sound.write_wav(path, sound.noise(20, seed))
    rows = [native_playlist.row_for(path) for path in paths]
    harness.check(len(rows[1].folder.encode()) > 200 and len(rows[1].name.encode()) > 172, "the long row is too short")
    return rows


LONG_SECONDS = 900


class Session:
    """One start of the program, to its end."""

    def __init__(self, stage, program_path):
        self.stage = stage
        self.tree = access_tree.Tree(stage)
        self.program = stage.run_program(program_path)
        self.tree.follow(self.program.process.pid)

    def shown(self):
        """The numbers of the rows in the first texts of the list, such as "1.one"."""
        return [item.name.rsplit(" ", 1)[0] for item in self.tree.all() if item.role == "list item"]

    def await_rows(self, titles):
        wanted = [f"{number}.{title}" for number, title in enumerate(titles, 1)]
        harness.wait_for(lambda: self.shown() == wanted, f"the list {wanted}; it is {self.shown()}")

    def move_down(self, number):
        self.tree.find("list item", f"{number}[.].*").node.act(access_tree.FOCUS_TAKING)
        self.tree.find("push button", "Move down").node.act()

    def play(self, number):
        self.tree.find("list item", f"{number}[.].*").node.act("Press")
        self.tree.find("label", "playing")

    def convert(self):
        """Begins to convert a file that takes long."""
        source = os.path.join(self.stage.folder, "long")
        out = os.path.join(self.stage.folder, "out")
        os.mkdir(source)
        os.mkdir(out)
        sound.write_wav(os.path.join(source, "a.wav"), sound.noise(10, 7) * (LONG_SECONDS // 10))
        window = converter_window.ConverterWindow(self.stage, self.program, self.tree)
        window.open("Open Converting Window")
        window.type_folder("Output folder", out)
        window.type_folder("Input folder", source)
        window.click("push button", "Tick all files")
        window.tick("Write OGG")
        window.start()
        begun = os.path.join(out, "a.ogg")
        harness.wait_for(lambda: os.path.exists(begun) and os.path.getsize(begun) > 20000, "some of the output")

    def end_by(self, number):
        self.program.process.send_signal(number)
        harness.wait_for(lambda: self.program.process.poll() is not None, f"the end by {number.name}")
        status = self.program.process.returncode
        harness.check(status == 0, f"{number.name} ended the program with {status}")


def test(program_path):
    with harness.Stage() as stage:
        rows = make_rows(stage)
        native_playlist.write_playlist(stage.default_playlist, rows)
        titles = [row.title for row in rows]

        def check_stored(what):
            stored = native_playlist.read_playlist(stage.default_playlist)
            harness.check([row.path for row in stored] == [row.path for row in rows],
                          f"{what}: the list is {[row.path for row in stored]}")

        for number, what in ((signal.SIGTERM, "moved"), (signal.SIGINT, "playing"), (signal.SIGHUP, "in a dialog")):
            session = Session(stage, program_path)
            session.await_rows(titles)
            if what == "playing":
                session.play(2)
            session.move_down(1)
            rows[0], rows[1] = rows[1], rows[0]
            titles[0], titles[1] = titles[1], titles[0]
            session.await_rows(titles)
            if what == "in a dialog":
                known = session.tree.paths()
                session.tree.find("push button", "Add audio files").node.act()
                session.tree.await_window(known, "the file dialog")
            session.end_by(number)
            check_stored(f"{number.name}, {what}")
        busy = Session(stage, program_path)
        busy.move_down(2)
        rows[1], rows[2] = rows[2], rows[1]
        titles[1], titles[2] = titles[2], titles[1]
        busy.await_rows(titles)
        busy.convert()
        busy.end_by(signal.SIGTERM)
        check_stored("converting")
        last = Session(stage, program_path)
        last.await_rows(titles)
        harness.check(last.program.close() == 0, "the program did not end well")
        check_stored("closed")


if __name__ == "__main__":
    harness.run(test)
