#!/bin/sh
# Runs the transfer script that Quorva wrote in temp/FtpQuorva.ini, with Quorva's own FTP
# client; temp/dummy_file.txt says that a transfer is running. The exit status is the
# client's: 0 only when every transfer asked was done.
cd "$(dirname "$0")" || exit 1
: > temp/dummy_file.txt
"${QUORVA_EXE:-quorva}" --home "$(pwd)" ftp-run temp/FtpQuorva.ini
status=$?
rm -f temp/dummy_file.txt
exit $status
