// Hand-written from the documentation pages named below, for type checks away from a Mac; no real build sees it.
// The library renames its functions, so that they can stand beside others of the same name.
#pragma once

#if defined(__cplusplus)
extern "C" {
#endif
// huge-man-linux.net/man3/dgettext.html
char* dgettext(const char* domainname, const char* msgid) __attribute__((format_arg(2))) __asm__("_libintl_dgettext");
// dngettext(3) (page not seen; man.netbsd.org/NetBSD-10.0/gettext.3)
char* dngettext(const char* domainname, const char* msgid, const char* msgid_plural, unsigned long int n)
    __attribute__((format_arg(2), format_arg(3))) __asm__("_libintl_dngettext");
// unix.com/man-page/centos/3/bindtextdomain
char* bindtextdomain(const char* domainname, const char* dirname) __asm__("_libintl_bindtextdomain");
// gnu.org/software/gettext/manual/html_node/Charset-conversion.html
char* bind_textdomain_codeset(const char* domainname, const char* codeset) __asm__("_libintl_bind_textdomain_codeset");
#if defined(__cplusplus)
}
#endif
