#pragma once

namespace tarnwick {

/// The whole program: reads the command line, does what its mode asks, and returns the status of the process.
int runProgram(int argc, char** argv);

}  // namespace tarnwick
