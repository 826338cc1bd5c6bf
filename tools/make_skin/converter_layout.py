"""Where everything of the converter window stands: places in the window and places in its strip."""

from layout_header import Layout

LAYOUT = Layout("src/convert/converter_layout.h", "converter_layout", (
    "Where everything of the converter window stands: places in the window, and places in its picture strip. Pixels.",))

WIDTH = LAYOUT.number("width", 616)
LAYOUT.note("5250 twips: without the events")
SHORT = LAYOUT.number("shortHeight", 350)
LAYOUT.note("9800 twips")
LONG = LAYOUT.number("longHeight", 653)
LAYOUT.note("The mouse over this band leaves the text boxes of the two paths as they are. The last row is part of it.")
LAYOUT.number("pathBandTop", 40)
LAYOUT.number("pathBandBottom", 66)
CORNER = (10, 10)
STRIP = (640, 328)

LAYOUT.section("Title")
LAYOUT.rect("title", 0, 0, 580, 26)
LAYOUT.rect("caption", 14, 4, 64, 20)
LAYOUT.rect("subject", 78, 4, 300, 20)
CLOSE = LAYOUT.key("ImageQuit", (586, 5, 18, 18), (384, 4), (406, 4))
LAYOUT.note("What the panel of formats covers while it is open.")
LAYOUT.rect("inputSide", 0, 26, 370, 324)

LAYOUT.section("Paths: the input's, then the output's")
LAYOUT.rects("pathCaption", (12, 26, 324, 14), (376, 26, 200, 14))
PATH_FIELDS = LAYOUT.rects("path", (12, 41, 324, 24), (376, 41, 200, 24))
FOLDERS = LAYOUT.keys("folder", ((340, 41, 24, 24), (432, 4), (460, 4)), ((580, 41, 24, 24), (432, 4), (460, 4)))

LAYOUT.section("Left: input types and the list of files")
TYPES = (12, 72, 352, 44)
LAYOUT.numbers("CheckinLeft", 20, 75, 139, 194, 250, 309)
LAYOUT.numbers("CheckinTop", 74, 94)
LAYOUT.size("Checkin", 57, 20)
LIST = (12, 124, 352, 194)
LAYOUT.note("Within its glass.")
LAYOUT.rect("ListViewInput", 14, 126, 348, 190)
LAYOUT.numbers("listColumns", 162, 86, 100)
TICKS = dict(zip(("all", "none"), LAYOUT.keys("ImageAllClear", ((12, 326, 24, 16), (492, 4), (520, 4)),
                                               ((39, 326, 24, 16), (548, 4), (576, 4)))))
LAYOUT.rect("statusLine", 72, 324, 292, 20)

LAYOUT.section("Right: output formats, progress, the keys of the run")
FORMATS = (376, 72, 228, 104)
LAYOUT.note("The first one.")
LAYOUT.rect("format", 386, 80, 68, 22)
LAYOUT.number("formatColumns", 3)
LAYOUT.number("formatStep", 73)
LAYOUT.number("formatRowStep", 22)
PROGRESS = (376, 184, 228, 104)
LAYOUT.rect("currentFile", 384, 191, 212, 18)
LAYOUT.rect("stage", 384, 210, 212, 18)
LAYOUT.rects("barCaption", (384, 236, 32, 16), (384, 260, 32, 16))
LAYOUT.rects("bar", (416, 238, 180, 12), (416, 262, 180, 12))
START = LAYOUT.key("Image1", (376, 297, 44, 44), (384, 36), (432, 36))
STOP = LAYOUT.key("Image2", (376, 297, 44, 44), (528, 36), (576, 36))
STOP_NORMAL = LAYOUT.point("Image2Normal", 480, 36)
OPTIONS = LAYOUT.key("ImageOptions", (432, 305, 92, 28), (384, 88), (480, 88), (384, 120))
HEIGHTS = {"down": LAYOUT.key("ImageUpdown", (532, 305, 72, 28), (384, 152), (460, 152)),
           "up": LAYOUT.key("ImageUpdownLong", (532, 305, 72, 28), (536, 152), (384, 184))}

LAYOUT.section("Events, in the long form alone")
EVENTS = (12, 374, 592, 267)
LAYOUT.rect("frmEvent", 0, SHORT, WIDTH, LONG - SHORT)
LAYOUT.note("In frmEvent; the list within its glass.")
LAYOUT.rect("eventsCaption", 12, 6, 200, 16)
LAYOUT.rect("viewEvent", 14, 26, 588, 263)
LAYOUT.numbers("eventColumns", 32, 72)

# The panel of the formats, drawn in the strip; places are those in the panel.
PANEL_LAYOUT = Layout("src/convert/format_panel_layout.h", "format_panel_layout", (
    "Where everything of the panel of formats stands: the panel in the window and in the strip, its parts in the panel. Pixels.",))
PANEL_LAYOUT.note("In the window.")
PANEL_LAYOUT.point("corner", 2, 25)
PANEL_LAYOUT.note("In the strip.")
GROUND = PANEL_LAYOUT.rect("ground", 4, 4, 370, 317)
PANEL_LAYOUT.rect("caption", 12, 4, 240, 18)
PANEL_CLOSE = PANEL_LAYOUT.key("ImageSetdown", (344, 4, 18, 18), (384, 240), (406, 240))

PANEL_LAYOUT.section("Rates and channels")
PANEL_RATES = (8, 26, 354, 42)
PANEL_LAYOUT.note("The first one.")
PANEL_LAYOUT.rect("opFreq", 18, 28, 64, 19)
PANEL_LAYOUT.number("freqColumns", 4)
PANEL_LAYOUT.number("freqStep", 64)
PANEL_LAYOUT.number("freqRowStep", 19)
PANEL_LAYOUT.rects("opChannels", (288, 28, 70, 19), (288, 47, 70, 19))

PANEL_LAYOUT.section("The table of formats: twelve lines of name, text and control")
PANEL_TEXTS = (54, 73, 252, 240)
FIRST_LINE = PANEL_LAYOUT.number("firstLine", 73)
LINE_STEP = PANEL_LAYOUT.number("lineStep", 20)
PANEL_LAYOUT.number("nameLeft", 10)
PANEL_LAYOUT.number("nameWidth", 43)
PANEL_LAYOUT.number("textLeft", 55)
PANEL_LAYOUT.number("textWidth", 250)
CONTROL_LEFT = PANEL_LAYOUT.number("controlLeft", 310)
CONTROL_WIDTH = PANEL_LAYOUT.number("controlWidth", 52)
CONTROL_HEIGHT = PANEL_LAYOUT.number("controlHeight", 18)
SET_HOVER = PANEL_LAYOUT.point("ImageSetHover", 384, 216)
SET_PRESSED = PANEL_LAYOUT.point("ImageSetPressed", 460, 216)
PANEL_LAYOUT.code("""
constexpr QRect Name(int line) {
    return {nameLeft, firstLine + line * lineStep, nameWidth, lineStep};
}
constexpr QRect Text(int line) {
    return {textLeft, firstLine + line * lineStep, textWidth, lineStep};
}
constexpr QRect Control(int line) {
    return {controlLeft, firstLine + line * lineStep + 1, controlWidth, controlHeight};
}
constexpr KeyLayout ImageSet(int line) {
    return {Control(line), ImageSetHover, ImageSetPressed};
}
""")

# The keys of the MP3, the Ogg Vorbis and the template line.
PANEL_SET_LINES = (1, 2, 11)
PANEL_SETS = [(CONTROL_LEFT, FIRST_LINE + line * LINE_STEP + 1, CONTROL_WIDTH, CONTROL_HEIGHT) for line in PANEL_SET_LINES]
PANEL_SET_LOOKS = {"hover": SET_HOVER, "pressed": SET_PRESSED}

HEADERS = (LAYOUT, PANEL_LAYOUT)
