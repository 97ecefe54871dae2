#pragma once

namespace talnik {

/// From here on, screen readers are told of moves in the order in which one understands them. Of a list that got the
/// focus they hear its line under the cursor too; the toolkit tells them of the list alone, more than once for one
/// focus. Of what is selected in a field they hear nothing until they know which field it is.
void TidyEventsForReaders();

}  // namespace talnik
