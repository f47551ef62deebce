#pragma once

// Here every version is there.
#define API_AVAILABLE(...)
#define API_DEPRECATED(...)
