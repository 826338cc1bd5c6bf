#include "converter_window_fixture.h"
