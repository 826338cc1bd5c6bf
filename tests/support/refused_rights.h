// A file system that does not let the rights of its files be changed.
#pragma once

namespace kestrune {

// While it lives, chmod, fchmod and fchmodat of this program are refused with EPERM.
class RefusedRights {
public:
    RefusedRights();
    ~RefusedRights();
    RefusedRights(const RefusedRights&) = delete;
    RefusedRights& operator=(const RefusedRights&) = delete;

    static int count; // of refusals since the last one was made
};

} // namespace kestrune
