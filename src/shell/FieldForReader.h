#pragma once

namespace talnik {

/// From here on, screen readers see text fields of a line through an interface of our own. The toolkit's hangs when
/// asked for the word at the end of the text, and tells of texts that belong to no letter, so that the last one goes
/// unread.
void ShowFieldsToReaders();

}  // namespace talnik
