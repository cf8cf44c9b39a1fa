// tarnwick-claude-hook --claude-hook FOLDER
// Started by Claude Code at each event of a session. It must be gone within some milliseconds and has therefore nothing
// of the dock in it.

#include "claudehook/Hook.h"

int main(int count, char** arguments) {
  tarnwick::runClaudeHook(count, arguments);
  return 0;
}
