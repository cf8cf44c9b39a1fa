#include <QtGlobal>

#include "platform/secret/module/AgreedKeyCipher.h"

/// The module's entry point; the caller owns what it gives.
extern "C" Q_DECL_EXPORT tarnwick::SecretCipher* tarnwickSecretCipher() { return new tarnwick::AgreedKeyCipher(); }
