#!/usr/bin/env bash
# Writes the norvane-cli(1) man page from the program's own --help texts, so the page and the
# program never disagree: the top-level help, then every command's (and sub-command's) help.
#
#   packaging/manpage.sh NORVANE_CLI VERSION OUTPUT
set -euo pipefail
cli=$1 version=$2 out=$3

# Commands listed under "Subcommands:" in a help text: the first word of each indented line.
subcommands() {
  "$cli" "$@" --help | awk '/^Subcommands:/ { on = 1; next } on && /^$/ { on = 0 } on && /^  [a-z]/ { print $1 }'
}

# Escapes a plain text for troff: backslashes, and leading dots or quotes.
escape() { sed -e 's/\\/\\e/g' -e "s/^\\([.']\\)/\\\\\\&\\1/"; }

section() {  # section COMMAND...
  echo ".SS \"norvane-cli $*\""
  echo ".nf"
  "$cli" "$@" --help | grep -v -e '^Exit status:' -e "^Run 'norvane-cli COMMAND --help'" | escape
  echo ".fi"
  local sub
  for sub in $(subcommands "$@"); do section "$@" "$sub"; done
}

{
  echo ".TH NORVANE-CLI 1 \"\" \"norvane-cli $version\" \"User Commands\""
  echo ".SH NAME"
  echo "norvane-cli \\- aeronautical calculator, command-line edition"
  echo ".SH SYNOPSIS"
  echo ".B norvane-cli"
  echo "[\\fB--raw\\fR | \\fB--json\\fR] \\fICOMMAND\\fR [\\fIOPTIONS\\fR]"
  echo ".SH DESCRIPTION"
  echo ".nf"
  "$cli" --help | grep -v -e '^Exit status:' -e "^Run 'norvane-cli COMMAND --help'" | escape
  echo ".fi"
  echo ".SH COMMANDS"
  for cmd in $(subcommands); do section "$cmd"; done
  echo ".SH EXIT STATUS"
  echo "0: results printed; 1: the calculation ended in the screen's error text, or a file, the"
  echo "network or the output failed (with a message); 2: bad or out-of-range input."
  echo ".SH SEE ALSO"
  echo ".BR norvane (1)"
} >"$out"
