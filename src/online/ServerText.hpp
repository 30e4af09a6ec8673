#pragma once
// Text received from a server, made fit to show: on a screen, in a terminal, in JSON.
//
// A server decides the bytes. A weather station file is plain ASCII in practice, but a mirror may
// send UTF-8 or Latin-1, and a hostile one escape sequences (ESC [ ... retitles or reprograms a
// terminal; byte 0x9B is the one-byte CSI of 8-bit terminals). Both the weather screen and
// norvane-cli read replies through these functions, so they show the same characters.

#include <string>
#include <string_view>

namespace norvane {

// True when `bytes` is well-formed UTF-8 (RFC 3629: no overlong forms, no surrogates, nothing
// above U+10FFFF).
bool IsValidUtf8(std::string_view bytes);

// The reply as UTF-8: unchanged when it is valid UTF-8, otherwise read as Latin-1 (ISO 8859-1),
// one character per byte, as the station files of old were.
std::string DecodeServerText(std::string_view bytes);

// DecodeServerText, then every control character (C0, DEL, C1) replaced: a tab by a space, the
// others by U+FFFD; line feeds, and a carriage return directly before one, stay. The result is
// valid UTF-8 that no terminal takes for a command.
std::string SafeServerText(std::string_view bytes);

}  // namespace norvane
