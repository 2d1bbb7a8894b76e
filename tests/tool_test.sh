#!/usr/bin/env bash
# The command itself: outputs compared whole, and exit statuses. Arguments: the words that run it. LOCALE_FOLDER has the
# locales of the tests.
set -euo pipefail
tool=("$@")
examples=$(cd "$(dirname "$0")/../examples" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
export LC_ALL=C
failures=0

fail() {
  echo "FAILED $*" >&2
  failures=$((failures + 1))
}

# check STATUS STDOUT STDERR ARGUMENT...: runs the command; its standard input is this function's.
check() {
  local status=$1 out=$2 err=$3 got=0
  shift 3
  "${tool[@]}" "$@" >out 2>err || got=$?
  if [ "$got" -ne "$status" ] || ! diff <(printf '%s' "$out") out || ! diff <(printf '%s' "$err") err; then
    fail "with $got: qzjexxml $*"
  fi
}

cp "$examples/project.xml" project.xml
cat >a.xml <<'END'
<r><kiv application="calc"><rootmacro><data name="N" abspath="/n"/><data name="Größe" abspath="/g"/></rootmacro>
<filemap><root path="r"><data dir_name="d" file_name="f" file_rename="F"/></root></filemap>
<varnixpath><data path="p"/></varnixpath></kiv></r>
END
echo '<r/>' >b.xml
echo '<r>' >bad.xml
table='root macros
  Größe = /g
  N     = /n
file map
  r/d/f -> d/F
search path
  p
'
empty='root macros
file map
search path
'
bad_report='qzjexxml: bad.xml: cannot be loaded
Fatal Error at file "JexXml", line 2, column 1
   Message: input ended before all started tags were ended; last tag started is '"'r'"'
Error buiding DOM
'
tree='=======================KIV============================
=======================================================
'
check 0 "$table" '' manifest a.xml
check 1 "a.xml:
${table}b.xml:
$empty" "$bad_report" manifest a.xml bad.xml b.xml
json='"rootMacros":{"Größe":"/g","N":"/n"},"fileMap":{"r/d/f":"d/F"},"varnixPath":["p"]}'
check 0 "{\"file\":\"a.xml\",$json
{\"file\":\"b.xml\",\"rootMacros\":{},\"fileMap\":{},\"varnixPath\":[]}
" '' manifest --json a.xml b.xml
cp a.xml $'caf\xe9.xml'
check 0 "{\"file\":\"caf"$'\xef\xbf\xbd'".xml\",$json
" '' manifest --json $'caf\xe9.xml'
# The C library does not free its own copy of LOCPATH.
LOCPATH=$LOCALE_FOLDER LC_ALL=test.ISO-8859-1 ASAN_OPTIONS=detect_leaks=0 check 0 "{\"file\":\"a.xml\",$json
" '' manifest --json a.xml
check 0 "$tree" '' manifest --tree b.xml
check 0 '' '' project project.xml b.xml
check 1 '' "$bad_report" project project.xml bad.xml b.xml
"${tool[@]}" project --tree project.xml | grep -qx '##exclude: message=Keys are never packaged.'

printf 'pw\nsecond line\n' >pw
echo other >other
: >empty
check 0 'a.xml -> a.enc
b.xml -> b.enc
' '' encrypt --passphrase-file pw a.xml b.xml
check 0 'a.enc: OK
' '' verify --passphrase-file - a.enc <pw
check 1 'b.enc: OK
' 'qzjexxml: a.xml: wrong passphrase or damaged file
' verify --passphrase-file pw a.xml b.enc
check 1 '' 'qzjexxml: a.enc: wrong passphrase or damaged file
' decrypt --passphrase-file other a.enc
"${tool[@]}" decrypt --passphrase-file pw a.enc | cmp - a.xml
echo kept >plain
check 1 '' 'qzjexxml: a.enc: wrong passphrase or damaged file
' decrypt -o plain --passphrase-file other a.enc
grep -qx kept plain
check 0 '' '' decrypt -o plain --passphrase-file pw a.enc
cmp plain a.xml
[ "$(stat -c %a plain)" = 600 ]
full=$( (trap '' XFSZ; ulimit -f 0; "${tool[@]}" decrypt -o plain --passphrase-file pw a.enc 2>&1) || true)
[ "$(cmp plain a.xml)$full" = 'qzjexxml: plain: cannot be written: File too large' ] || fail "on a full disk: $full"
check 1 '' 'qzjexxml: no/plain: cannot be written: No such file or directory
' decrypt -o no/plain --passphrase-file pw a.enc
mkdir folder
check 1 '' 'qzjexxml: folder: cannot be written: Is a directory
' decrypt -o folder --passphrase-file pw a.enc
check 1 '' 'qzjexxml: nope: cannot be encrypted
Could not open file: nope
' encrypt --passphrase-file pw nope
printf 'p\0w\n' >nul
printf '%01023d' 0 >longest
printf '%01024d' 0 >too-long
for row in 'empty:it is empty, which protects nothing' 'nul:it contains a NUL byte' \
  'too-long:it is longer than 1,023 bytes' 'none:cannot read none: No such file or directory'; do
  check 1 '' "qzjexxml: passphrase: ${row#*:}
" encrypt --passphrase-file "${row%%:*}" a.xml
done
check 1 '' 'qzjexxml: a.enc: wrong passphrase or damaged file
' verify --passphrase-file longest a.enc
ln -s /dev/full full.enc
cp a.xml full.xml
check 1 '' 'qzjexxml: full.enc: cannot be decrypted
Could not read file!
qzjexxml: full.enc: is not what was to be written; the disk may be full
' encrypt --passphrase-file pw full.xml
for arguments in 'manifest a.xml' 'decrypt --passphrase-file pw a.enc' --version; do
  # shellcheck disable=SC2086
  got=0 && "${tool[@]}" $arguments >/dev/full 2>err || got=$?
  if [ $got -ne 1 ] || [ "$(cat err)" != 'qzjexxml: standard output: cannot be written' ]; then
    fail "on a full disk: $arguments"
  fi
done

# A pipe that nobody reads, and the prompt on a terminal.
{ "${tool[@]}" manifest a.xml 2>err || echo $? >status; } | :
if [ "$(cat status)" != 1 ] || [ "$(cat err)" != 'qzjexxml: standard output: cannot be written' ]; then fail 'on a closed pipe'; fi
answer() { # PROMPT TEXT: waits for the prompt
  for _ in {1..400}; do
    grep -q "$1" typescript && break
    sleep 0.05
  done
  echo "$2"
}
: >typescript
{ answer 'Passphrase: ' pw && answer again pw2; } | timeout 60 script -qfec "${tool[*]} encrypt b.xml" typescript >prompts || true
if [ "$(tr -d '\r' <prompts)" != 'Passphrase: 
Passphrase again: 
qzjexxml: passphrase: the passphrases differ' ]; then
  fail "to ask: $(cat prompts)"
fi

check 0 'qzjexxml 7.1.0.144 (July 26, 2005)
' '' --version
for arguments in '' nonsense manifest 'manifest --json --tree a.xml' 'decrypt a.enc b.enc'; do
  # shellcheck disable=SC2086
  got=0 && "${tool[@]}" $arguments >out 2>/dev/null || got=$?
  if [ $got -ne 2 ] || [ -s out ]; then fail "usage: $arguments"; fi
done
"${tool[@]}" encrypt --help | grep -q passphrase-file
if compgen -G '*.??????' | grep -v '^passphrase$'; then fail 'temporary files are left'; fi
exit $((failures > 0))
