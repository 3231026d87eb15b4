// What a test writes to standard output, as text.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace trikon {

/// Takes what is written to std::cout from its construction to its destruction.
///
/// std::cout begins and ends without error flags. Made and destroyed while no other thread writes.
class CapturedOutput {
public:
    CapturedOutput() : previous(std::cout.rdbuf(captured.rdbuf())) {}
    ~CapturedOutput() { std::cout.rdbuf(previous); }
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;

    std::string text() const { return captured.str(); }

private:
    std::ostringstream captured;
    std::streambuf* previous;
};

}  // namespace trikon
