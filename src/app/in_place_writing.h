// New content for a file that has to stay the same one.
#pragma once

namespace kestrune {

// Makes the content of `target` that of `wanted`; both are open, `target` for reading and writing. Only
// the bytes that differ are written, from the end to the start, so that a change inside of a tag is one small
// write, and what a tag behind the sound adds stands there before the head tells of it. What was there goes
// to `undo`, an empty file open for both, first: after a failure it is put back. True when the new content is
// on the disk. A process that is killed inside of it, or a machine that goes off, leaves a part of the one
// content and a part of the other.
bool WriteInPlace(int wanted, int target, int undo);

} // namespace kestrune
