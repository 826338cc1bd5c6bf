"""Where everything of the converter window stands, in pixels: places in the window and places in its strip.

The program has the same numbers in src/convert/converter_layout.h; a test compares what both draw.
"""

WIDTH, SHORT, LONG = 616, 350, 653
CORNER = (10, 10)
STRIP = (640, 328)

# Glass and grooves of the window: x, y, width, height.
PATH_FIELDS = ((12, 41, 324, 24), (376, 41, 200, 24))
TYPES = (12, 72, 352, 44)
LIST = (12, 124, 352, 194)
FORMATS = (376, 72, 228, 104)
PROGRESS = (376, 184, 228, 104)
EVENTS = (12, 374, 592, 267)

# name -> (x, y, width, height) in the window, and the corners of the looks in the strip
CLOSE = (586, 5, 18, 18)
CLOSE_LOOKS = {"hover": (384, 4), "pressed": (406, 4)}
FOLDERS = ((340, 41, 24, 24), (580, 41, 24, 24))
FOLDER_LOOKS = {"hover": (432, 4), "pressed": (460, 4)}
TICKS = {"all": (12, 326, 24, 16), "none": (39, 326, 24, 16)}
TICK_LOOKS = {"all": {"hover": (492, 4), "pressed": (520, 4)}, "none": {"hover": (548, 4), "pressed": (576, 4)}}
START = (376, 297, 44, 44)
START_LOOKS = {"hover": (384, 36), "pressed": (432, 36)}
STOP_LOOKS = {"normal": (480, 36), "hover": (528, 36), "pressed": (576, 36)}
OPTIONS = (432, 305, 92, 28)
OPTIONS_LOOKS = {"hover": (384, 88), "pressed": (480, 88), "lit": (384, 120)}
HEIGHT = (532, 305, 72, 28)
HEIGHT_LOOKS = {"down": {"hover": (384, 152), "pressed": (460, 152)}, "up": {"hover": (536, 152), "pressed": (384, 184)}}

# The panel of the formats, drawn in the strip; places are those in the panel.
PANEL = (370, 317)
PANEL_IN_STRIP = (4, 4)
PANEL_RATES = (8, 26, 354, 42)
PANEL_TEXTS = (54, 73, 252, 240)
PANEL_ROW = 20
PANEL_CLOSE = (344, 4, 18, 18)
PANEL_CLOSE_LOOKS = {"hover": (384, 240), "pressed": (406, 240)}
PANEL_SETS = ((310, 94, 52, 18), (310, 114, 52, 18), (310, 294, 52, 18))
PANEL_SET_LOOKS = {"hover": (384, 216), "pressed": (460, 216)}
