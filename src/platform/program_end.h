#pragma once
// Ending the program from below the frame: where a routine's own rules say that the application ends
// (the interpolator's coefficients missing from the settings file), it says so through the prompt
// service and then asks here. The frame installs its own end; without it, the request is only
// counted, which is what the command-line tool and the tests want.

namespace vesk {

class ProgramEnd {
public:
    virtual ~ProgramEnd() = default;
    virtual void end() = 0;
};

// Counts the requests; the default without a frame, and the double of tests.
class CountingProgramEnd : public ProgramEnd {
public:
    void end() override { ++requests; }
    int requests = 0;
};

ProgramEnd& programEnd();
void setProgramEnd(ProgramEnd* end); // not owned; nullptr goes back to the default

inline void endTheProgram() {
    programEnd().end();
}

} // namespace vesk
