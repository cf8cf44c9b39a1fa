#pragma once

class QCoreApplication;

namespace tarnwick {

/// Lets the program speak the words of this desktop. `application` takes them over.
void loadWords(QCoreApplication& application);

}  // namespace tarnwick
