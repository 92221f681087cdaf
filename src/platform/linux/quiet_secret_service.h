#pragma once

#include <glib-object.h>

namespace lunevra {

/// The type of a SecretService that fails where it would show a dialog to the person.
[[nodiscard]] GType quietSecretServiceType();

}  // namespace lunevra
