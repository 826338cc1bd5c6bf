// The rules of the program as `main` puts them together, over fakes and without a window.
#pragma once

#include "program/program.h"
#include "support/fake_components.h"
#include "support/fake_tool_windows.h"

namespace kestrune {

// `Parts` are the components, made anew; more of them than of FakeComponents where a test looks deeper.
template <typename Parts = FakeComponents>
class TestProgram {
public:
    ProgramState state;
    FakeToolWindows tools;
    Parts components;
    Program program{components, state, tools};
};

} // namespace kestrune
