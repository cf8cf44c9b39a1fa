#pragma once

namespace tarnwick {

/// Whether the engine gets its sandbox: a user namespace of its own. It would go on without one and say nothing, and
/// the administrator never has one. To be asked before there is a second thread.
bool isSandboxAvailable();

}  // namespace tarnwick
