#!/usr/bin/env bash
# kest_test.sh KEST...: the host program as its users call it. Output, errors and exit statuses.
# KEST is a command: an emulator may precede the program.
set -uo pipefail
kest=("$@")
tools=$(dirname "$0")/../../tools
failed=0
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
fail() { echo "$*" && failed=1; }

# expect STATUS OUTPUT ERROR ARGUMENTS...: ERROR is a piece of standard error, "" for none. Standard
# input is that of the caller.
expect() {
  local status=$1 output=$2 error=$3
  shift 3
  local got
  got=$("${kest[@]}" "$@" 2>"$folder/stderr")
  local got_status=$?
  local got_error
  got_error=$(cat "$folder/stderr")
  if [ "$got_status" != "$status" ] || [ "$got" != "$output" ] ||
    { [ -z "$error" ] && [ -n "$got_error" ]; } || [[ "$got_error" != *"$error"* ]]; then
    printf 'kest %s\n  status %s, expected %s\n  output: %s\n  expected: %s\n  error: %s\n' \
      "$*" "$got_status" "$status" "$got" "$output" "$got_error"
    failed=1
  fi
}

expect 0 $'AT+CMGS=18\n0011000A8121436587090000AD05E8329BFD06' '' submit 1234567890 hello
expect 0 '{"type":"SUBMIT","length":12,"pdu":"07911326040000F03100049194710018AD0220AC"}' '' \
  submit --json --status-report --class 0 --smsc +31624000000 +4917 €
expect 0 $'AT+CMGS=18\n001100049194710008AD080078D83DDE000079' '' submit +4917 x😀y
expect 0 $'AT+CMGS=18\n00000491947100001121133295858003613D1D' '' \
  deliver +4917 --time 2011/12/31,23:59:58+08 azt
expect 0 $'SMS-DELIVER\n  service centre +447785016005\n  from           sipgate
  time           2008/08/13 12:07:22 +01:00\n  text           Testmail' '' \
  decode 0791447758100650040dd0f334fc1ca6970100008080312170224008d4f29cde0ea7d9
expect 0 '{"type":"SUBMIT","destination":"1234567890","text":"hello"}' '' \
  decode --json --direction sent 0011000A8121436587090000AD05E8329BFD06
# What came from the air does not steer the terminal; a lone surrogate does not break the output.
expect 0 $'SMS-SUBMIT\n  to             1\n  text           \\x1b[2\\x9b\n                 �' '' \
  decode 0001000181F100080C001B005B0032009B000AD83D
expect 1 $'{"type":"SUBMIT","destination":"1","text":"a"}\n{"type":"SUBMIT","destination":"1","text":"b"}' \
  $'kest: line 4: not hexadecimal text, two digits to an octet: \'zz\'\nkest: line 5: the PDU' decode --json - \
  < <(printf '0011000181F10000AD0161\r\n+CMT: ,5\n\nzz\n0002\n0011000181F10000AD0162\n')

# A long text goes out in segments, and comes back as one whatever their order. What is missing is
# named, and a message beside it is not held up.
letters=$(printf 'a%.0s' {1..152})
packed=$(printf 'E170381C0E87C3%.0s' {1..19})
long=("AT+CMGS=149" "0051000181F10000ADA006080400000301$packed" "AT+CMGS=149"
  "0051010181F10000ADA006080400000302$packed" "AT+CMGS=17" "0051020181F10000AD090608040000030362")
expect 0 "$(printf '%s\n' "${long[@]}")" '' submit 1 "$letters${letters}b"
time=2011/12/31,23:59:58+08
fields='{"type":"DELIVER","segment":{"total":2,"sequence":%s},"length":%s,"pdu":"00400181F1001911211332958580%s'
# shellcheck disable=SC2059
expect 0 "$(printf "$fields" 1 153 '8B06080400000201'"$(printf '00E9%.0s' {1..66})"; echo '"}'
  printf "$fields" 2 31 '110608040000020200E900E900E900E900E9"}')" '' \
  deliver --json --class 1 --time "$time" 1 "$(printf 'é%.0s' {1..71})"
other=0051000181F10000AD090608040001030363 # the last segment of a message of another reference
expect 0 "{\"type\":\"SUBMIT\",\"destination\":\"1\",\"text\":\"b\"}
{\"type\":\"SUBMIT\",\"destination\":\"1\",\"segments\":{\"reference\":0,\"total\":3},\"text\":\"$letters${letters}b\"}
{\"type\":\"SUBMIT\",\"destination\":\"1\",\"segments\":{\"reference\":1,\"total\":3},\"missing\":[1,2],\"text\":\"[...][...]c\"}" \
  '' decode --json - \
  < <(printf '%s\n' "${long[5]}" $other "${long[1]}" 0011000181F10000AD0162 "${long[3]}")
expect 0 $'SMS-SUBMIT\n  to             1\n  segments       3, reference 1\n  missing        1, 2\n  text           [...][...]c' \
  '' decode - <<<"$other"
# The longest text has more octets than fit the library's 16-bit sizes as hexadecimal text.
expect 0 "{\"type\":\"SUBMIT\",\"destination\":\"1\",\"segments\":{\"reference\":0,\"total\":255},\"text\":\"$(printf "$letters%.0s" {1..255})\"}" \
  '' decode --json - < <(printf "0051000181F10000ADA00608040000FF%02X$packed\n" {1..255})
expect 0 $'AT+CMGS=33\n0000021002040401048D00060100081100032000100104101741A00501AD0A0140' '' \
  cdma --status-report 1234 hi
expect 0 '{"type":"CDMA-SUBMIT","length":31,"pdu":"00000210020403004400060100081000032000100103000C000501AD0A0100"}' '' \
  cdma --json --hex 1 80
expect 0 $'USSD string\n  text           hello' '' ussd E8329BFD06
expect 0 '{"dcs":72,"text":"A€"}' '' ussd --json --dcs 72 004120AC

# Standard input: all of it is a text, or each line a string or an answer.
expect 0 $'AT+CMGS=15\n0011000181F10000AD06E8329BFD5600' '' submit 1 - < <(printf 'hello\n\n')
expect 1 '' 'an octet 0' submit 1 - </dev/zero
expect 1 '' "can't read standard input" submit 1 - <"$folder"
expect 1 $'{"dcs":15,"text":"hello"}\n{"dcs":15,"text":"hello"}' \
  $'kest: line 3: not hexadecimal text, two digits to an octet: \'zz\'\nkest: 1 of' ussd --json - \
  < <(printf 'E8329BFD06\n\nzz\r\nE8329BFD06 \r\n')
expect 1 '{"file":"6F07","type":"DF"}' $'kest: line 1: cut off' sim --json - \
  < <(printf '621E8205\n62088202382183026F07')
expect 1 '' 'kest: line 1: cut off' sim - < <(printf '62088202382183026F07%0131072d' 0)
expect 0 $'1\n22' '' log - < <(printf '\xCE\n\xCD\xCD')
yes 0011000181F10000AD0161 | timeout 60 "${kest[@]}" decode - >/dev/full 2>/dev/null
[ "${PIPESTATUS[1]}" = 1 ] || fail 'a full disk is no failure'

# Status reports, with what their status means.
report=0006000B915155214365F7121032110502231210321105022341
expect 0 $'SMS-STATUS-REPORT\n  to             +15551234567\n  sent           2021/01/23 11:50:20 +08:00
  discharged     2021/01/23 11:50:20 +08:00\n  status         0x41: incompatible destination (permanent error)' \
  '' decode ${report/0006/0046}
times='"scts":"2021/01/23,11:50:20+32","discharge_time":"2021/01/23,11:50:20+32"'
expect 0 "{\"type\":\"STATUS-REPORT\",\"recipient\":\"+15551234567\",$times,\"status\":{\"value\":176,\"name\":\"reserved\",\"group\":\"reserved\"},\"class\":1,\"text\":\"Aè\"}" \
  '' decode --json "${report%41}B006F1024142"

# A warning of three pages: a page on a line, and as one message of a UMTS network.
pages=(46A0111305134E662BC82ECBE92018AD1593B56430D90C1493E960301D885A9C528545697288A4BA40C432E86D2FCBD1E53419740F87E5F331BA7EA783D465103DAD2697DD7390FBFD26CFD3F47A989E2ECF41F67418E404
  46A011130523CC56905D96D35D206519C42E97E7741039EC06DDC37490BA0C6ABFCB7410F95D7683CA6ED03D1C9683D46550BB5C9683D26EF35BDE0ED3D365D03AEC06D9D36E72D9ED02A9542A10B538A5829AC5E9347804
  46A0111305334590B34C4797E5ECB09B3C071DDFF6B2DCDD2EBBE920685DCC4E8F41D7B0DC9D769F41D3FC9C5E6EBB40CE37283CA6A7DF6E90BC1CAFA7E565B2AB)
text='NL-Alert 04-12-2023 12:00: TESTBERICHT. De overheid waarschuwt je tijdens noodsituaties via NL-Alert. Je leest dan wat je moet doen en waar je meer informatie kan vinden. *** TEST MESSAGE Netherlands Government Public Warning System. No action required.'
warning='"identifier":4371,"serial_number":{"value":18080,"scope":"network","code":106,"update":0},"cmas":{"class":"extreme","severity":"extreme","urgency":"immediate","certainty":"observed"},"pages":3,"language":"Dutch","text":'
expect 0 "{\"form\":\"GSM\",$warning\"$text\"}" '' \
  cb --json - < <(printf '%s\n' "${pages[2]}" "${pages[0]}" "${pages[1]}")
expect 0 $'GSM cell broadcast\n  identifier     4371, CMAS\n  serial number  0x46A0: message 106, update 0, scope network
  warning        extreme, severity extreme, urgency immediate, certainty observed\n  pages          3\n  missing        1, 2
  language       Dutch\n  text           [...][...]E Netherlands Government Public Warning System. No action required.' \
  '' cb - <<<"${pages[2]}"
above=${pages[1]:0:10}9${pages[1]:11} # page 9 of 3
expect 1 "{\"form\":\"GSM\",$warning\"$text\"}" 'kest: line 2: page 9 is above the total of 3' \
  cb --json - < <(printf '%s\n' "${pages[0]}" "$above" "${pages[2]}" "${pages[1]}")
filling=$(printf '00%.0s' {1..23})
expect 0 "{\"form\":\"UMTS\",$warning\"$text\"}" '' \
  cb --json "01111346A00503${pages[0]:12}52${pages[1]:12}52${pages[2]:12}${filling}3B"
expect 0 $'ETWS primary notification\n  identifier     4357, ETWS\n  serial number  0x1003: message 256, update 3, scope cell, shown at once
  warning        reserved, show at once' '' cb 100311050580
number='"identifier":50,"serial_number":{"value":16401,"scope":"network","code":1,"update":1}'
expect 0 "{\"form\":\"GSM\",$number,\"page\":{\"number\":1,\"total\":1},\"language\":\"en\",\"text\":\"hello\"}" \
  '' cb --json 4011003210116577035D66B3DF
page=$(printf '20AC%.0s' {1..41})52
expect 1 "{\"form\":\"UMTS\",$number,\"pages\":11,\"text\":null}" 'kest: line 2: the library refuses this message' \
  cb --json - < <(printf '0100324011480B'; printf "$page%.0s" {1..11}; printf '\n0100324011480B'; printf "$page%.0s" {1..10})

# What a card says about a file.
expect 0 $'SIM file\n  file           6F3C\n  type           linear fixed EF\n  size           140 octets
  records        5 of 28 octets\n  access rules   record 2 of file 6F06' \
  '' sim 621E82054221001C0583026F3CA5038001718A01058B036F06028002008C8800
rules=800101A00AA403830101A40383010A800102AF0AA403830101A40383018E800108A4038301118401329000
expect 0 $'SIM file\n  file           6F07\n  type           transparent EF\n  read           any of PIN, ADM1
  update         all of PIN, ADM10\n  increase       always\n  deactivate     universal PIN\n  activate       never' '' \
  sim "62388202412183026F078A0105AB2B$rules"
expect 0 '{"file":"6F07","type":"DF"}' '' sim --json 62088202382183026F07

# Errors of the work: status 1. Bad usage: status 2. Nothing on standard output.
expect 1 '' 'refuses this SUBMIT' decode 0001000181F100048D
expect 1 '' 'ends before its status' decode 0002
expect 1 '' 'ends before its status' decode ${report%41}
expect 1 '' 'refuses this STATUS-REPORT' decode ${report}04A1
expect 1 '' 'no SUBMIT' decode --direction sent $report
expect 1 '' 'no message has 5 octets' cb 4011003211
expect 1 '' 'no message has 21173 octets' cb "$(printf '00%.0s' {1..21173})"
expect 1 '' 'page 2 is above the total of 1' cb 401100321021
expect 1 '' 'refuses this message' cb "02$(printf '00%.0s' {1..88})"
expect 1 '' 'no answer to GET RESPONSE' sim 621E8205
expect 2 '' 'not hexadecimal' cb 40110
expect 2 '' 'not hexadecimal' sim xx
expect 1 '' 'no SUBMIT' decode --direction sent 0004
expect 1 '' "can't open" log "$folder/none"
expect 1 '' "can't read" log "$folder"
expect 2 '' 'the number is empty' submit '' hello
expect 2 '' 'is no number' submit 12x4 hello
expect 2 '' 'more than 20 digits' submit 123456789012345678901 hello
expect 2 '' 'not hexadecimal' submit --hex 1 4g
expect 2 '' 'not hexadecimal' decode 0011z
expect 2 '' 'not expected: --bogus' decode --bogus 00
expect 2 '' 'a time is' deliver 1 a --time yesterday
expect 2 '' 'subcommand is required'
expect 2 '' 'more than 24 digits' cdma 1234567890123456789012345 hello
expect 2 '' 'not hexadecimal' ussd 004
expect 2 '' 'more than 255 octets' ussd "$(printf '00%.0s' {1..256})"
expect 1 '' 'data coding scheme 76' ussd --dcs 0x4C 0041
expect 1 '' "can't be encoded" cdma 1 ''
expect 1 '' 'too long' cdma 1 "$(printf 'a%.0s' {1..161})"
expect 1 '' 'more than 2048' submit 1 "$(printf 'a%.0s' {1..2049})"
expect 1 '' 'segment 1 does not fit' submit 1 --class 0 --hex "$(printf '7B%.0s' {1..140})80"
expect 1 '' "can't be encoded" submit --hex 1 "$(printf '61%.0s' {1..200})C3"
expect 1 '' 'over 255 octets' submit --hex 1 "$(printf 'F09F9880%.0s' {1..70})"
expect 0 $'AT+CMGS=10\n0011000181F10000AD0161' 'a receiver reads: a' submit 1 $'a\x01'
expect 2 '' 'has no name' log -f -

# Each option has its place in the page of its command.
for command in '' submit deliver cdma decode cb ussd sim log; do
  diff <("${kest[@]}" ${command:+"$command"} --help | sed -nE 's/^  (-[^ ]+).*/\1/p' | tr , '\n' | sort) \
    <(grep '^\.It Fl' "$tools/man/kest${command:+-$command}.1" | grep -o 'Fl [^ ]*' | sed 's/Fl /-/' | sort) ||
    fail "the page of kest $command has other options"
done

# A terminal gets colours unless it does not want them; nothing else does.
coloured() { # coloured PATTERN TERM NO_COLOR ARGUMENTS
  local got
  got=$(TERM=$2 NO_COLOR=$3 script -qec "${kest[*]@Q} $4" /dev/null </dev/null | tr -d '\r')
  # shellcheck disable=SC2053
  [[ $got == $1 ]] || fail "TERM=$2 NO_COLOR=$3: kest $4: $got"
}
echo "${pages[2]}" >"$folder/page"
coloured $'\e\\[1mGSM cell broadcast\e\\[0m\n  \e\\[36midentifier\e\\[0m     4371, CMAS\n*
  \e\\[31mwarning\e\\[0m        ext*\n  \e\\[33mmissing\e\\[0m        1, 2\n*' xterm '' "cb - <${folder@Q}/page"
coloured $'USSD string\n  text           hello' dumb '' 'ussd E8329BFD06'
coloured $'USSD string\n  text           hello' xterm 1 'ussd E8329BFD06'
coloured $'USSD string\n  text           hello' xterm '' 'ussd E8329BFD06 | cat'
coloured '{"dcs":15,"text":"hello"}' xterm '' 'ussd --json E8329BFD06'

# The debug log comes back as plain text.
"${kest[@]}" --trace "$folder/log" submit 1 --hex 41 >"$folder/out"
"${kest[@]}" log "$folder/log" | grep -E '^[0-9/]+ [0-9:]+, pid: *[0-9]+, kest_sms_encode_long_gw_submit_pdu_with_validity buf\[0\]: 0x41$' >/dev/null ||
  fail 'no such line in the log'
"${kest[@]}" log --json "$folder/log" | grep -E '^\{"time":"[0-9/]+ [0-9:]+","pid":[0-9]+,"text":"kest_sms_encode_long_gw_submit_pdu_with_validity buf_len: 1"\}$' >/dev/null ||
  fail 'no such object in the log'

# A followed log, its records 1 to 6, complemented. It is not there at first; a record waits for its
# end; one that never gets it comes before the rotation; the new file is truncated.
await() { # await LINES FILE: waits until that is what the file holds
  timeout 60 bash -c 'until [ "$(cat "$1")" = "$0" ]; do sleep 0.1; done' "$1" "$2" ||
    fail "$(basename "$2") has '$(cat "$2")' and not '$1'"
}
live=$folder/live
timeout 300 "${kest[@]}" log -f "$live" >"$folder/out" 2>"$folder/stderr" &
await "kest: waiting for '$live'" "$folder/stderr"
printf '\xCE\n\xCD' >"$live"
await 1 "$folder/out"
printf '\xCD\n\xCC' >>"$live"
mv "$live" "$live.1"
printf '\xCB\n\xCA\xCA\n' >"$live"
await $'1\n22\n3\n4\n55' "$folder/out"
printf '\xC9\n' >"$live"
await $'1\n22\n3\n4\n55\n6' "$folder/out"
kill $!
wait $! 2>/dev/null
[ $? = 143 ] || fail 'a signal does not end log -f'
timeout 60 "${kest[@]}" log -f --json "$live" 2>/dev/null | grep -m1 -q '"text":"6"'
[[ ${PIPESTATUS[*]} =~ ^(1|141)\ 0$ ]] || fail 'log -f does not end with its reader'

# Completion offers what --help shows. `-o default` stands for file names.
kest() { "${kest[@]}" "$@"; }
compopt() { asked=$*; }
# shellcheck source=tools/completion/kest
source "$tools/completion/kest"
completed() { # completed OFFERED WORD...: the last word is to be completed
  local asked='' COMP_WORDS=("${@:2}") COMP_CWORD=$(($# - 2))
  _kest kest "${!#}" "${COMP_WORDS[COMP_CWORD - 1]}"
  [ "$asked${COMPREPLY[*]}" = "$1" ] || fail "completion of '${*:2}': $asked${COMPREPLY[*]}"
}
completed 'submit deliver cdma decode cb ussd sim log' kest ''
completed 'submit sim' kest --trace log s
completed 'submit sim' kest --trace = log s
completed '-o default' kest --trace ''
completed '' kest submit --smsc ''
completed '0 1 2 3' kest deliver --class ''
completed 'received' kest decode --json --direction = r
completed '-o default' kest log -f ''
completed '--follow' kest log --f
exit "$failed"
