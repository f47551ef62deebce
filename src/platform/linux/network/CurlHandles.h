#pragma once

#include <curl/curl.h>

#include <memory>
#include <string>

namespace vantrel::linuxdesktop {

struct CurlEasyDeleter {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct CurlMultiDeleter {
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};
struct CurlListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

using CurlEasy = std::unique_ptr<CURL, CurlEasyDeleter>;
using CurlMulti = std::unique_ptr<CURLM, CurlMultiDeleter>;
using CurlList = std::unique_ptr<curl_slist, CurlListDeleter>;

/// Without memory the list stays as it was.
inline void append(CurlList& list, const std::string& text) {
    curl_slist* const longer = curl_slist_append(list.get(), text.c_str());
    if (longer == nullptr || longer == list.get()) return;
    // The first entry made the list.
    (void)list.release();
    list.reset(longer);
}

}  // namespace vantrel::linuxdesktop
