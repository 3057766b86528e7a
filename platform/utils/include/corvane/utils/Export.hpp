#pragma once

/// Marks what a platform library exports. Everything else stays hidden, as the whole repository is
/// built with hidden visibility.
#define CORVANE_EXPORT __attribute__((visibility("default")))
