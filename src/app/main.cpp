#include "app/Program.h"

int main(int argc, char** argv) { return tarnwick::runProgram(argc, argv); }
