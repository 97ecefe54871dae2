#pragma once

namespace talnik {

/// From here on, screen readers that are told of a list that got the focus are told of its line under the cursor too.
/// The toolkit tells them of the list alone, more than once for one focus.
void TellLineOfFocusedList();

}  // namespace talnik
