#pragma once

// Every version is available here.
#define API_AVAILABLE(...)
#define API_DEPRECATED(...)
