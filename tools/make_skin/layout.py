"""Where everything of the main window stands, in pixels: places in the window and places in the strip.

The program has the same numbers in src/app/main_layout.h; a test compares what both draw.
"""

WINDOW = (393, 385)
CORNER = (17.5, 19)
STRIP = (480, 460)

CLOCK = (11, 77, 140, 74)
DISPLAY_FRAME = (157, 77, 162, 74)
DISPLAY_FRAME_IN_STRIP = (240, 311)
FORMAT_LINE = (182, 50, 201, 22)
LIST = (11, 241, 373, 121)
SMALL_TOTAL = (300, 222, 83, 15)
POSITION_LINE = (11, 229, 198, 6)
POSITION_IN_STRIP = (4, 382)
THUMB = (12, 12)
THUMB_IN_STRIP = (410, 311)
THUMB_HELD_IN_STRIP = (424, 311)
KNOB_CENTRE = (223, 193)
KNOB_WIDTH = 56
DOT_IN_STRIP = (440, 311)
DOT = 8

MENU_CHANNEL = (11, 26, 371, 19)

# name -> (x, y, width, height) in the window
TRANSPORT = {
    "previous": (11, 176, 30, 30), "pause": (91, 176, 30, 30), "play": (44, 169, 44, 44),
    "stop": (124, 176, 30, 30), "record": (272, 174, 34, 34), "next": (157, 176, 30, 30),
}
TRANSPORT_HOVER = {"previous": (230, 50), "pause": (267, 50), "play": (303, 50), "stop": (350, 50), "record": (389, 50),
                   "next": (426, 50)}
TRANSPORT_PRESSED = {"previous": (230, 100), "pause": (267, 103), "play": (303, 101), "stop": (350, 100),
                     "record": (389, 100), "next": (426, 100)}

MODES = {"continuous": (326, 77, 57, 22), "shuffle": (326, 103, 57, 22), "repeat": (326, 129, 57, 22)}
MODES_HOVER = {"continuous": (58, 30), "shuffle": (58, 55), "repeat": (58, 80)}
MODES_LIT = {"continuous": (58, 117), "shuffle": (58, 146), "repeat": (58, 177)}

LIST_KEYS = {name: (12 + 27 * i, 365, 24, 16) for i, name in
             enumerate(("add", "delete", "open", "save", "up", "down"))}
LIST_KEYS_HOVER = {name: (230 + 27 * i, 150) for i, name in enumerate(LIST_KEYS)}
LIST_KEYS_PRESSED = {name: (230 + 27 * i, 170) for i, name in enumerate(LIST_KEYS)}

WINDOW_KEYS = {"close": (362, 5, 18, 18), "minimise": (341, 5, 18, 18)}
WINDOW_KEYS_HOVER = {"close": (420, 150), "minimise": (442, 150)}
WINDOW_KEYS_PRESSED = {"close": (420, 172), "minimise": (442, 172)}

SIDE_KEYS = {"equalizer": (314, 177, 32, 28), "colours": (351, 177, 32, 28)}
SIDE_KEYS_HOVER = {"equalizer": (230, 195), "colours": (266, 195)}
SIDE_KEYS_PRESSED = {"equalizer": (302, 195), "colours": (338, 195)}
SIDE_KEYS_LIT = {"equalizer": (374, 195), "colours": (410, 195)}

TOOL_CELL = (28, 24)
TOOLS = {"idle": (12, 49), "rip": (46, 49), "burn": (78, 49), "convert": (110, 49), "sites": (142, 49)}
TOOL_FRAME_LEFTS = (143, 172, 201)
TOOL_FRAME_TOPS = {"idle": 10, "rip": 116, "burn": 146, "convert": 176, "sites": 296}

STATE_LAMPS = {"stopped": (22, 86, 12, 12), "playing": (22, 105, 12, 12), "paused": (22, 124, 12, 12)}
STATE_LAMPS_LIT = {"stopped": (4, 350), "playing": (20, 350), "paused": (36, 350)}

BIG_DIGITS = [(52, 88), (64, 88), (82, 88), (94, 88)]
COLON = (78, 88)
SMALL_DIGITS = [(111, 93), (120, 93)]
KHZ_LAMP = (50, 121, 24, 12)
KBPS_LAMP = (104, 121, 16, 12)
KBPS_CUTS = {"64": (55, 9), "80": (69, 9), "112": (83, 12), "128": (97, 12), "192": (111, 12), "256": (126, 12),
             None: (142, 16)}

VOLUME_MARKS = [((196, 161), (8, 8), (142, 441), (157, 238)), ((246, 165), (8, 8), (142, 431), (162, 247)),
                ((253, 179), (10, 9), (143, 418), (170, 253)), ((249, 206), (11, 10), (143, 404), (180, 257))]

TINY_DIGITS = {"0": 356, "1": 359, "2": 362, "3": 366, "4": 370, "5": 374, "6": 378, "7": 382, "8": 386, "9": 390,
               ":": 395, "/": 398}
TINY_TOP, TINY_HEIGHT = 10, 7
# Their strokes, through the middles of pixels. The zero, which has three pixels, is narrow at its ends: two of them beside
# each other stay two.
TINY_STROKES = {
    "0": [[(1.4, 0.5), (0.5, 1.6), (0.5, 5.4), (1.4, 6.5), (2.3, 5.4), (2.3, 1.6), (1.4, 0.5)]],
    "1": [[(0.6, 1.5), (1.5, 0.5), (1.5, 6.5)]],
    "2": [[(0.5, 0.5), (2.5, 0.5), (2.5, 3.5), (0.5, 3.5), (0.5, 6.5), (2.5, 6.5)]],
    "3": [[(0.5, 0.5), (2.5, 0.5), (2.5, 6.5), (0.5, 6.5)], [(0.9, 3.5), (2.5, 3.5)]],
    "4": [[(0.5, 0.5), (0.5, 3.5), (2.5, 3.5)], [(2.5, 0.5), (2.5, 6.5)]],
    "5": [[(2.5, 0.5), (0.5, 0.5), (0.5, 3.5), (2.5, 3.5), (2.5, 6.5), (0.5, 6.5)]],
    "6": [[(2.5, 0.5), (0.5, 0.5), (0.5, 6.5), (2.5, 6.5), (2.5, 3.5), (0.5, 3.5)]],
    "7": [[(0.5, 0.5), (2.5, 0.5), (1.5, 4), (1.5, 6.5)]],
    "8": [[(0.5, 0.5), (2.5, 0.5), (2.5, 6.5), (0.5, 6.5), (0.5, 0.5)], [(0.5, 3.5), (2.5, 3.5)]],
    "9": [[(0.5, 6.5), (2.5, 6.5), (2.5, 0.5), (0.5, 0.5), (0.5, 3.5), (2.5, 3.5)]],
    ":": [[(1.5, 2), (1.5, 2.2)], [(1.5, 4.8), (1.5, 5)]],
    "/": [[(2.2, 0.5), (0.7, 6.5)]],
}
