// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
#pragma once

#if defined(__cplusplus)
extern "C" {
#endif
// gnu.org/software/gettext/manual/html_node/Interface-to-gettext.html
char* dgettext(const char* domain, const char* text) __attribute__((format_arg(2)));
#if defined(__cplusplus)
}
#endif
