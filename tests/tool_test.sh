#!/usr/bin/env bash
# Tests the command: replays data/command.txt, and then tests a terminal, signals and parallel processes. Arguments: the
# words of a command line that runs it. LOCALE_DIRECTORY contains the locales of the tests.
set -euo pipefail
tool=("$@")
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
cp "$here"/../examples/*.xml "$here/data/mistakes.xml" .
export LC_ALL=C
failures=0

fail() {
  echo "FAILED: $*" >&2
  failures=$((failures + 1))
}

mkdir bin
printf '#!/bin/sh\nexec %s "$@"\n' "${tool[*]}" >bin/qzjexxml
chmod +x bin/qzjexxml
PATH=$PWD/bin:$PATH

# shellcheck disable=SC2317 # called in data/command.txt
completions() { # WORD...: prints what bash offers for the last WORD
  . "$here/../share/completions/qzjexxml.bash"
  COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
  _qzjexxml
  echo "${COMPREPLY[@]}"
}

while IFS= read -r line; do
  case $line in
    '$ '*)
      status=0
      (eval "${line#\$ }") >.out 2>.err </dev/null || status=$?
      echo "$line"
      cat .out
      sed 's/^/! /' .err
      [ "$status" -eq 0 ] || echo "[$status]"
      ;;
    '-- '*) echo "$line" ;;
  esac
done <"$here/data/command.txt" >transcript
diff -a "$here/data/command.txt" transcript >&2 || fail 'the output differs from data/command.txt'

# The C library does not free its own copy of LOCPATH.
env LOCPATH="$LOCALE_DIRECTORY" LC_ALL=test.ISO-8859-1 ASAN_OPTIONS=detect_leaks=0 qzjexxml manifest --json a.xml |
  cmp - <(qzjexxml manifest --json a.xml) || fail 'JSON is not UTF-8 in another locale'

# diff reports a change of any attribute. all.xml has everything that the schema declares, with one attribute on each
# line.
for kind in manifest project; do
  awk -F '"' '{ line[NR] = $0; name[NR] = $2; depth[NR] = match($0, "[^ ]") }
    END {
      for (i = 1; i <= NR; ++i) {
        if (line[i] ~ /<xs:element /) {
          print "<" name[i]
          for (k = i + 1; depth[k] > depth[i]; ++k) {
            if (depth[k] == depth[i] + 4 && line[k] ~ /<xs:attribute /) print name[k] "=\"v\""
          }
          print ">"
          open[depth[i]] = name[i]
        }
        if (line[i] ~ /<\/xs:element>/) print "</" open[depth[i]] ">"
      }
    }' "$here/../share/$kind.xsd" >all.xml
  [ "$(grep -c '="v"' all.xml)" = "$(grep -c '<xs:attribute ' "$here/../share/$kind.xsd")" ] || fail "all.xml does not have all attributes of $kind.xsd"
  while IFS=: read -r number attribute; do
    sed "$number s/\"v\"/\"w\"/" all.xml | qzjexxml diff all.xml - >difference && fail "diff exits with 0 after a change of $attribute"
    grep -q . difference || fail "diff prints nothing after a change of $attribute"
  done < <(grep -n '="v"' all.xml)
done

# The configuration for git in docs/mistakes.md, with a manifest, a project, a file that does not load, and a file in
# which only a comment changes.
if command -v git >/dev/null; then
  git init -q repository && cd repository
  eval "$(grep '^git config' "$here/../docs/mistakes.md")"
  echo '*.xml diff=description' >.gitattributes
  cp ../{manifest,project,bad,b}.xml . && git add . && git -c user.name=t -c user.email=t@example.org commit -qm m
  sed -i 's/version="2.1"/version="2.2"/' manifest.xml project.xml
  echo '<!-- -->' | tee -a bad.xml >>b.xml
  git diff >../difference || fail 'git diff fails'
  cd ..
  [ "$(grep -cE '^! root element .*, now .*2\.2|^\+<!-- -->' difference)" = 4 ] || fail "git diff prints: $(cat difference)"
fi

{ qzjexxml manifest a.xml 2>err || echo $? >status; } | :
if [ "$(cat status)" != 141 ] || [ -s err ]; then fail 'a closed pipe is reported'; fi

# The completions and the man page have every command and option.
for command in $(qzjexxml --help | sed -n '/^Subcommands/,/^$/s/^  \([a-z]*\).*/\1/p'); do
  for word in "$command" $(qzjexxml help "$command" | grep -oE -- '--[a-z-]+' | cut -c3-); do
    for file in share/completions/{qzjexxml.bash,_qzjexxml,qzjexxml.fish} docs/man/qzjexxml.1; do
      grep -qw -- "$word" <(sed 's/\\//g' "$here/../$file") || fail "$file lacks $word"
    done
  done
done

# The documentation has exactly the rules and messages of the code.
qzjexxml rules | cut -d ' ' -f 1 >names
diff names <(grep -oP '^\*\*\K[a-z-]+' "$here/../docs/mistakes.md") >&2 || fail 'docs/mistakes.md has other rules than the command'
sed 's/\\//g' "$here/../docs/man/qzjexxml.1" | grep -owFf names | sort -u | diff - <(sort names) >&2 || fail 'the man page has other rules than the command'
sed 's/\\"/"/g' "$here"/../tools/*/*.cpp >code
sed -n '/^## The command/,$p' "$here/../docs/diagnostics.md" >documented
perl -0777 -ne 'while (/(?:throw Failure|ofSystem|[^:.]report)\((?!Rule)(.*?)\);|const char\* \w+ =([^;(]*);/gs) {
  my $said = $1 // $2; while ($said =~ /"((?:[^"\\]|\\.){4,})"/g) { print $1 =~ s/\\(.)/$1/gr, "\n" } }' "$here"/../tools/*/*.cpp >said
while IFS= read -r text; do grep -qF -- "$text" documented || fail "docs/diagnostics.md lacks \"$text\""; done <said
cut -d '|' -f 2 documented | grep -oP '\x60[^\x60]*\x60' | sed -E 's/\x60//g; s/^qzjexxml: //; s/^(FILE|OUT|passphrase|standard output): //; s/("KEY"|"\.\.\."|: \.\.\.|OUT|F: \.\.\.)$//; s/^\.\.\. //' >texts
while IFS= read -r text; do grep -qF -- "$text" code || fail "docs/diagnostics.md has \"$text\", which is not in the code"; done <texts

# Parallel processes, and signals.
for _ in {1..4}; do qzjexxml encrypt --force --passphrase-file pw a.xml >/dev/null & done
wait
qzjexxml verify --passphrase-file pw a.enc >/dev/null || fail 'parallel processes damage the encrypted file'
for signal in TERM QUIT XFSZ; do
  env --default-signal=QUIT qzjexxml encrypt -o signalled --passphrase-file pw a.xml >/dev/null 2>&1 &
  for _ in {1..1000}; do
    compgen -G 'signalled.??????' >/dev/null && break
    sleep 0.01
  done
  kill -$signal $!
  wait $! 2>/dev/null && fail "SIG$signal does not end the command"
done
if compgen -G '*.??????' >&2 || [ -e signalled ]; then fail 'interrupted commands leave files'; fi

# The prompt and the progress line on a terminal.
answer() { # PROMPT TEXT: waits for the prompt, then prints TEXT
  for _ in {1..400}; do
    grep -q "$1" typescript && break
    sleep 0.05
  done
  echo "$2"
}
: >typescript
{ answer 'Passphrase: ' pw && answer again pw2; } | timeout 60 script -qfec "qzjexxml encrypt -o p b.xml" typescript >prompts || true
if [ "$(tr -d '\r' <prompts)" != 'Passphrase: 
Passphrase again: 
qzjexxml: passphrase: the passphrases differ' ]; then
  fail "the prompts are: $(cat prompts)"
fi
files=$(printf 'b.xml %.0s' {1..50})
for no in '' 1 dumb; do
  TERM=${no:-xterm} NO_COLOR=${no/dumb/} script -qec "qzjexxml check --color=auto $files mistakes.xml" /dev/null </dev/null >"shown$no" || true
done
if ! grep -qF $'\r\e[K51 of 51: mistakes.xml\r\e[K\e[1mmistakes.xml:2:4:\e[m \e[1;35mwarning:\e[m the type' shown ||
  [ "$(cat shown1 showndumb | grep -cF $'\e[Kmistakes.xml:2:4: warning: the type')" != 2 ]; then
  fail 'the progress line differs'
fi
script -qec 'qzjexxml encrypt -o - b.xml' /dev/null </dev/null >shown || true
grep -qF 'standard output: is a terminal' shown || fail 'encrypt writes to a terminal'
truncate -s 51M long
script -qec 'qzjexxml check long' /dev/null </dev/null >shown || true
grep -qF '1 of 1: long' shown || fail 'a long file shows no progress'

exit $((failures > 0))
