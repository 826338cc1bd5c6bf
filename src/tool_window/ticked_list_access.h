// A list with ticks for a screen reader: the toolkit's own cells turn the selection over, and not the tick.
#pragma once

namespace kestrune {

// Makes every TickedListView known to assistive programs. Any number of calls; window thread.
void InstallTickedListAccess();

} // namespace kestrune
