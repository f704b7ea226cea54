"""What the tests on a display share: a display server of their own, the program's window, keys, mouse and pixels."""

import os
import shutil
import struct
import subprocess
import time
import unittest
from pathlib import Path

from support import Case, PROGRAM, TIME_LIMIT

TOOLS = ("Xvfb", "xdotool")


def activity(process):
    """The state of a process ("R" runs or would like to, "S" waits, "Z" has ended) and the time that it has worked."""
    try:
        fields = Path("/proc", str(process.pid), "stat").read_text().rpartition(")")[2].split()
    except FileNotFoundError:
        return "Z", []
    return fields[0], fields[11:13]


@unittest.skipUnless(all(shutil.which(tool) for tool in TOOLS), "needs " + " and ".join(TOOLS))
class WindowCase(Case):
    """A test with a display of its own, on which the program opens its window. Places are pixels of that window."""

    def setUp(self):
        super().setUp()
        # The display server chooses a free number and tells it.
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            # It would start anew, and turn programs away meanwhile, whenever the last one leaves.
            ["Xvfb", "-displayfd", str(writing), "-noreset", "-screen", "0", "1300x850x24", "-nolisten", "tcp",
             "-fbdir", str(self.folder)],
            pass_fds=(writing,), stderr=subprocess.DEVNULL)
        os.close(writing)
        self.addCleanup(self.stop, self.server)
        with os.fdopen(reading) as told:
            number = told.readline().strip()
        self.assertTrue(number, "the display server didn't start")
        # The system's libraries behind the window keep memory to the end.
        self.environment.update(DISPLAY=":" + number, SDL_VIDEODRIVER="x11", ASAN_OPTIONS="detect_leaks=0")
        self.profile = self.folder / "settings.ini"

    @staticmethod
    def stop(process):
        process.kill()
        process.wait()

    def start(self, *arguments):
        program = subprocess.Popen([PROGRAM, "--profile", str(self.profile), *arguments], env=self.environment,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.addCleanup(program.stdout.close)
        self.addCleanup(self.stop, program)
        window = self.eventually("the window opens", lambda: self.find_window(program))
        self.busy = (self.server, program)
        # There is no window manager that would give it the keyboard.
        self.xdo("windowfocus", window)
        self.settle()
        return program

    def xdo(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self.environment, check=False, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout.split()

    def find_window(self, program):
        if program.poll() is not None:
            self.fail("the program ended early: " + program.stdout.read().decode(errors="replace"))
        found = self.xdo("search", "--onlyvisible", "--name", "vondrake$")
        return found[0] if found else None

    def eventually(self, what, condition, limit=TIME_LIMIT):
        end = time.monotonic() + limit
        while time.monotonic() < end:
            answer = condition()
            if answer:
                return answer
            time.sleep(0.1)
        self.fail("never happened: " + what)

    def settle(self):
        """Waits until the display server and the program wait: what was done to them has had its effect."""
        former, quiet = None, 0

        def rests():
            nonlocal former, quiet
            now = [activity(process) for process in self.busy]
            quiet = quiet + 1 if now == former and all(state != "R" for state, _ in now) else 0
            former = now
            return quiet == 2

        self.eventually("nothing is left to do", rests)

    def screen(self):
        """The rows of the display's picture, each pixel four bytes."""
        data = (self.folder / "Xvfb_screen0").read_bytes()
        header = struct.unpack_from(">25L", data)
        size, height, stride, colours = header[0], header[5], header[12], header[19]
        begin = size + 12 * colours
        return [data[begin + y * stride:begin + (y + 1) * stride] for y in range(height)]

    def part(self, window, box):
        """The pixels of a box (left, top, right, bottom) of the window."""
        place = dict(line.split("=") for line in self.xdo("getwindowgeometry", "--shell", window))
        left, top = int(place["X"]), int(place["Y"])
        rows = self.screen()[top + box[1]:top + box[3]]
        return [row[4 * (left + box[0]):4 * (left + box[2])] for row in rows]

    def move(self, window, place):
        self.xdo("mousemove", "--window", window, *map(str, place))

    def click(self, window, place, button=1, times=1):
        self.move(window, place)
        self.xdo("click", "--repeat", str(times), "--delay", "60", str(button))
        self.settle()

    def drag(self, window, begin, *places, button=1):
        """Holds the button from the first place by way of the others to the last."""
        self.move(window, begin)
        self.xdo("mousedown", str(button))
        for place in places:
            time.sleep(0.1)
            self.move(window, place)
        time.sleep(0.1)
        self.xdo("mouseup", str(button))
        self.settle()

    def settings(self):
        return self.profile.read_text() if self.profile.exists() else ""

    def keys(self, *names):
        self.xdo("key", *names)
        self.settle()

    def enter(self, line):
        self.xdo("type", "--delay", "20", "--", line)
        self.keys("Return")

    def quit(self, program):
        self.enter("QUIT")
        # A key that is lost while a window comes up is no fault of ours: the line is typed again.
        def ended():
            if program.poll() is None:
                self.keys("Escape")
                self.enter("QUIT")
            return program.poll() is not None
        self.eventually("QUIT ends the program", ended)
        self.assertEqual(program.returncode, 0, program.stdout.read().decode(errors="replace"))

    def changed(self, window, box, former):
        """The box's pixels once they differ and stay so."""
        first = self.part(window, box)
        time.sleep(0.3)
        return first if first != former and self.part(window, box) == first else None

    def steady(self, window, box):
        """The box's pixels when nothing moves in it any more."""
        pictures = [None]

        def rests():
            pictures.append(self.part(window, box))
            time.sleep(0.3)
            return pictures[-1] == pictures[-2]

        self.eventually("the picture rests", rests)
        return pictures[-1]
