#!/usr/bin/env bash
# examples_test.sh FOLDER [EMULATOR...]: runs the examples that were built in FOLDER and compares
# what they print.
set -euo pipefail
cd "$1"
emulator=("${@:2}")

example() { # example NAME ARGUMENT...: what it prints, also of errors; its status if it fails
  timeout 60 "${emulator[@]}" "./$1" "${@:2}" 2>&1 || echo "status $?"
}
repeated() { # repeated COUNT TEXT
  printf "$2%.0s" $(seq "$1")
}
hostile() { # lines too long, odd, cut off, and with no digits; and one that a modem adds
  printf '%s\n' "$(repeated 3000 00)" 0791330609204 0791330609 $'07\001-' '+CMT: ,24'
}

diff -u <(example work_queue) - <<'END'
worker: one
worker: two
worker: three
main: 15 octets
END

diff -u <(example usock_datagram 'Grüße') <(echo 'Grüße')

# The first cut would come between two surrogates.
diff -u <(example send_long_message +4917 "$(repeated 65 ä)😀[1]"
  example send_long_message 1 '{hello}'
  example send_long_message 1 $'a\xC3'
  example send_long_message '1;2' a) - <<END
AT+CMGS=150
001100049194710008AD8C$(repeated 65 00E4)D83DDE00005B0031005D
AT+CMGS=17
0011000181F10000AD091B14BACC66BF3729
send_long_message: the text is no UTF-8, or too long
status 1
send_long_message: usage: send_long_message NUMBER TEXT
status 1
END

# An alphanumeric sender; surrogates; such as are no pairs, and characters that would steer a
# terminal; a segment of a class; no text; a status report.
diff -u <((hostile && cat <<'END'
0791447758100650040DD0F334FC1CA6970100008080312170224008D4F29CDE0EA7D9
07913306092041F0040B913306991364F60008619091516061800AD83DDE03D83DDE0E0020
07913306092041F0040B913306991364F60008619091516061800ED83D001B009BDE0E000DD83DDE0E
038121F340048155550119906041001222044A0500031E0303043C043D043004420443002C0020043F043E043704300431044B0432000A0434043004360435002C002004470442043E002000200431044B043B0020043D04300433002E
0791947122725014440185F039F501801140311480720605040B8423F00106246170706C69636174696F6E2F766E642E7761702E6D6D732D6D65737361676500AF84B4868C82984F67514B4B42008D9089088045726F74696B009650696E2D557073008A808E0240008805810303F48083687474703A2F2F657073332E64652F4F2F5A39495A4F00
079124603050020006E80C91666666666666909070618422809090706184628000
END
) | example read_message) - <<'END'
line 1 is refused
line 2 is refused
line 3 is refused
line 4 is refused
from sipgate, 2008/08/13,12:07:22+04
  Testmail
from +33609931466, 2016/09/19,15:06:16+08
  😃😎
from +33609931466, 2016/09/19,15:06:16+08
  �  � 😎
from 5555, 2009/06/14,00:21:22+40, class 1, segment 3 of 3 (reference 30)
  мнату, позабыв даже, что  был наг.
from 0, 2010/08/11,04:13:41+08, class 1
  no text: for port 2948, from port 9200
line 11 is refused
status 1
END

# A page, again, and its update; a page 9 of 3; a UMTS message; ETWS; what is no warning.
diff -u <((hostile && cat <<'END'
46A0111305334590B34C4797E5ECB09B3C071DDFF6B2DCDD2EBBE920685DCC4E8F41D7B0DC9D769F41D3FC9C5E6EBB40CE37283CA6A7DF6E90BC1CAFA7E565B2AB
46A0111305334590B34C4797E5ECB09B3C071DDFF6B2DCDD2EBBE920685DCC4E8F41D7B0DC9D769F41D3FC9C5E6EBB40CE37283CA6A7DF6E90BC1CAFA7E565B2AB
46A1111305334590B34C4797E5ECB09B3C071DDFF6B2DCDD2EBBE920685DCC4E8F41D7B0DC9D769F41D3FC9C5E6EBB40CE37283CA6A7DF6E90BC1CAFA7E565B2AB
46A0111305934590B34C4797E5EC
01111F40C00101D4E2940A0A328B522A0BE40C52934FE735492C8282CCA2940A2206B320194C260351D175900C2693BD62B2170C076A8162305D2D070AB7412D10B53CA783C2ECB29C0E6A81CC6F398858AED3E763343BEC0652
70001100058012103211050223
011000320111C2327BFC76BBCBEE46A3D168341A8D46A3D168341A8D46A3D168341A8D46A3D168341A8D46A3D168341A8D46A3D168341A8D46A3D168341A8D46A3D168341A8D46A3D168341A8D46A3D168341A8D46A3D100
END
) | example warning_receiver) - <<'END'
line 1 is refused
line 2 is refused
line 3 is refused
line 4 is refused
ALERT CMAS extreme, immediate, observed, serial number 0x46A0, page 3 of 3
  E Netherlands Government Public Warning System. No action required.
ALERT CMAS extreme, immediate, observed, serial number 0x46A1, page 3 of 3
  E Netherlands Government Public Warning System. No action required.
line 9 is refused
ALERT CMAS of unknown class, serial number 0x40C0
  TEST ALERT, NATIONWIDE ALERT DAY 2022 Thu 2022/12/08 - 10:59 am - Test alert - for Deutschlan
ALERT ETWS earthquake, show at once, serial number 0x7000, 2021/01/23,11:50:20+32
message 50, serial number 0x0110, page 1 of 1
  Belconnen
status 1
END

# A card of each generation, rules that stand elsewhere, and answers that are none.
diff -u <(example sim_file 62588205462100031983026F39A50AC00100CD02FF01CA01858A0105AB36800101A406830101950108840132A406830101950108800102A4068301819501088401D49700800158A40683010A95010880012097008002004B8800
  example sim_file 000000346F40040011FFFF0102011A
  example sim_file 621D8202782183023F00A5038001718A01058B032F0603C606900100830101
  example sim_file 62588205462100031983026F
  example sim_file "$(repeated 2000 0)") - <<'END'
file 6F39: cyclic, 75 octets, 25 records of 3 octets
read: PIN
update: PIN2
file 6F40: linear fixed, 52 octets, 2 records of 26 octets
read: PIN
update: PIN
file 3F00: root
rules: record 3 of file 2F06
sim_file: the answer is cut off, or is none
status 1
usage: sim_file ANSWER, at most 256 octets
status 2
END

folder=$(mktemp -d)
trap 'kill %1 2>/dev/null || true; rm -rf "$folder"' EXIT
name=${folder#/}/socket
timeout 60 "${emulator[@]}" ./named_socket_server "$name" &
ask() { # ask TEXT [COMMAND...]: COMMAND runs the client
  "${@:2}" timeout 10 "${emulator[@]}" ./named_socket_client "$name" "$1"
}
for ((i = 0; i < 100; i++)); do # the server may still be on its way
  answer=$(ask 'Grüße') && break
  sleep 0.1
done
# Beside a client that is connected and says nothing, another one gets its answer.
# shellcheck disable=SC2016
silence=(perl -MIO::Socket::UNIX -e '$client = IO::Socket::UNIX->new("/" . shift) or die;
  exit system(@ARGV) >> 8' "$name")
diff -u <(echo "$answer" && ask 'a b' && ask 'a' "${silence[@]}" && ask '') - <<'END'
5 characters
3 characters
1 characters
0 characters
END
wait %1
[ "$(stat -c %a "/$name")" = 660 ]
if ask 'nobody is there'; then
  exit 1
fi
# A server that has no descriptor for its clients ends.
status=0
timeout 20 prlimit --nofile=4 "${emulator[@]}" ./named_socket_server "$name.full" 3>&- || status=$?
[ "$status" = 1 ]
[ -S "/$name.full" ]
