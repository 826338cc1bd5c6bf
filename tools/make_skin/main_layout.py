"""Where everything of the main window stands: places in the window and places in the strip."""

from layout_header import Layout

LAYOUT = Layout("src/main_window/main_layout.h", "layout", (
    "Where everything of the main window stands: places in the window, and places in its picture strip. Pixels.",))


def named(names, keys):
    """The keys of a control array, by name."""
    return dict(zip(names, keys))


def looks(keys, look):
    return {name: key.looks[look] for name, key in keys.items()}


def places(keys):
    return {name: key.place for name, key in keys.items()}


WINDOW = LAYOUT.size("window", 393, 385)
CORNER = (17.5, 19)
STRIP = (480, 460)
LAYOUT.note("The sums under the list end here.")
LAYOUT.number("totalsRight", 383)

LAYOUT.section("Title and menus")
LAYOUT.rect("title", 0, 0, 339, 26)
LAYOUT.rect("caption", 14, 4, 60, 20)
WINDOW_KEY_LOOKS = named(("close", "minimise"), LAYOUT.keys("ImageWin", ((362, 5, 18, 18), (420, 150), (420, 172)),
                                                          ((341, 5, 18, 18), (442, 150), (442, 172))))
WINDOW_KEYS = places(WINDOW_KEY_LOOKS)
WINDOW_KEYS_HOVER, WINDOW_KEYS_PRESSED = looks(WINDOW_KEY_LOOKS, "hover"), looks(WINDOW_KEY_LOOKS, "pressed")
LAYOUT.number("menuTop", 26)
LAYOUT.number("menuHeight", 19)
LAYOUT.number("menuLeft", 12)
LAYOUT.numbers("menuWidths", 38, 41, 37, 43, 61, 46, 43, 60)
MENU_CHANNEL = (11, 26, 371, 19)

LAYOUT.section("Tool bar: the idle picture, then the ripper, the writer, the converter and the sites")
TOOL_NAMES = ("idle", "rip", "burn", "convert", "sites")
TOOL_CELL = LAYOUT.size("toolCell", 28, 24)
TOOLS = named(TOOL_NAMES, LAYOUT.points("ImageToolBar", (12, 49), (46, 49), (78, 49), (110, 49), (142, 49)))
TOOL_FRAME_LEFTS = LAYOUT.numbers("toolFrameLefts", 143, 172, 201)
TOOL_FRAME_TOPS = named(TOOL_NAMES, LAYOUT.numbers("toolFrameTops", 10, 116, 146, 176, 296))
FORMAT_LINE = (182, 50, 201, 22)
LAYOUT.rect("formatLine", 188, 52, 189, 18)

LAYOUT.section("Clock, lamps and display")
CLOCK = (11, 77, 140, 74)
LAYOUT.size("bigDigit", 11, 18)
LAYOUT.size("smallDigit", 8, 13)
BIG_DIGITS = LAYOUT.points("ImageData", (52, 88), (64, 88), (82, 88), (94, 88))
COLON = (78, 88)
SMALL_DIGITS = LAYOUT.points("ImageData1", (111, 93), (120, 93))
LAMP_NAMES = ("stopped", "playing", "paused")
STATE_LAMPS = named(LAMP_NAMES, LAYOUT.rects("ImageSmall", (22, 86, 12, 12), (22, 105, 12, 12), (22, 124, 12, 12)))
STATE_LAMPS_LIT = named(LAMP_NAMES, LAYOUT.points("ImageSmallLit", (4, 350), (20, 350), (36, 350)))
KHZ_LAMP = LAYOUT.rect("Image44100", 50, 121, 24, 12)
KBPS_LAMP = LAYOUT.rect("ImageKBPS", 104, 121, 16, 12)
KBPS_CUTS = {"64": (55, 9), "80": (69, 9), "112": (83, 12), "128": (97, 12), "192": (111, 12), "256": (126, 12),
             None: (142, 16)}
DISPLAY_FRAME = LAYOUT.rect("displayFrame", 157, 77, 162, 74)
DISPLAY_FRAME_IN_STRIP = LAYOUT.point("displayFrameInStrip", 240, 311)
LAYOUT.rect("display", 162, 82, 152, 64)

LAYOUT.section("Transport, modes and the panels' buttons")
TRANSPORT_KEYS = named(("previous", "pause", "play", "stop", "record", "next"), LAYOUT.keys(
    "ImagePlayButton",
    ((11, 176, 30, 30), (230, 50), (230, 100)), ((91, 176, 30, 30), (267, 50), (267, 103)), ((44, 169, 44, 44), (303, 50), (303, 101)),
    ((124, 176, 30, 30), (350, 50), (350, 100)), ((272, 174, 34, 34), (389, 50), (389, 100)), ((157, 176, 30, 30), (426, 50), (426, 100))))
TRANSPORT = places(TRANSPORT_KEYS)
TRANSPORT_HOVER, TRANSPORT_PRESSED = looks(TRANSPORT_KEYS, "hover"), looks(TRANSPORT_KEYS, "pressed")
MODE_KEYS = named(("continuous", "shuffle", "repeat"), LAYOUT.keys(
    "ImageRepeatModeBut", ((326, 77, 57, 22), (58, 30), (58, 117), (58, 117)), ((326, 103, 57, 22), (58, 55), (58, 146), (58, 146)),
    ((326, 129, 57, 22), (58, 80), (58, 177), (58, 177))))
MODES = places(MODE_KEYS)
MODES_HOVER, MODES_LIT = looks(MODE_KEYS, "hover"), looks(MODE_KEYS, "lit")
PANEL_KEYS = {"equalizer": LAYOUT.key("ImageChgLstBnd", (314, 177, 32, 28), (230, 195), (302, 195), (374, 195)),
              "colours": LAYOUT.key("ImageColour", (351, 177, 32, 28), (266, 195), (338, 195), (410, 195))}
SIDE_KEYS = places(PANEL_KEYS)
SIDE_KEYS_HOVER, SIDE_KEYS_PRESSED, SIDE_KEYS_LIT = (looks(PANEL_KEYS, look) for look in ("hover", "pressed", "lit"))

LAYOUT.section("Volume")
KNOB_CENTRE = (223, 193)
KNOB_WIDTH = 56
# Place and size, then the place in the strip of the lit and of the dark one.
VOLUME_MARKS = [((196, 161), (8, 8), (142, 441), (157, 238)), ((246, 165), (8, 8), (142, 431), (162, 247)),
                ((253, 179), (10, 9), (143, 418), (170, 253)), ((249, 206), (11, 10), (143, 404), (180, 257))]
LAYOUT.rects("ImageVol", *((*place, *size) for place, size, _, _ in VOLUME_MARKS))
LAYOUT.points("ImageVolLit", *(lit for _, _, lit, _ in VOLUME_MARKS))
DOT_IN_STRIP = LAYOUT.point("volumeDotInStrip", 440, 311)
DOT = 8

LAYOUT.section("Position")
LAYOUT.rect("positionBar", 11, 226, 198, 12)
POSITION_LINE = (11, 229, 198, LAYOUT.number("positionLineHeight", 6))
POSITION_IN_STRIP = LAYOUT.point("positionLineInStrip", 4, 382)
THUMB = (12, 12)
THUMB_IN_STRIP = LAYOUT.point("thumbInStrip", 410, 311)
THUMB_HELD_IN_STRIP = LAYOUT.point("thumbHeldInStrip", 424, 311)

LAYOUT.section("List")
LIST = (11, 241, 373, 121)
LAYOUT.rect("list", 12, 242, 360, 119)
LAYOUT.note("What takes the place of list and scroll bar.")
LAYOUT.rect("panel", 12, 242, 371, 119)
LAYOUT.rect("listScrollBar", 373, 242, 10, 119)
SMALL_TOTAL = (300, 222, 83, 15)
LAYOUT.rect("PictureSelToal", 301, 222, 81, 15)
LIST_KEY_NAMES = ("add", "delete", "open", "save", "up", "down")
LIST_KEY_STEP = 27
ALL_LIST_KEYS = named(LIST_KEY_NAMES, LAYOUT.keys("ImageListCmd", *(
    ((12 + LIST_KEY_STEP * i, 365, 24, 16), (230 + LIST_KEY_STEP * i, 150), (230 + LIST_KEY_STEP * i, 170))
    for i in range(len(LIST_KEY_NAMES)))))
LIST_KEYS = places(ALL_LIST_KEYS)
LIST_KEYS_HOVER, LIST_KEYS_PRESSED = looks(ALL_LIST_KEYS, "hover"), looks(ALL_LIST_KEYS, "pressed")
LAYOUT.number("totalsTop", 365)
LAYOUT.number("totalsHeight", 16)

# The digits of the small totals.
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
