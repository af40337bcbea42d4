@echo off
rem Runs the transfer script that Quorva wrote in temp\FtpQuorva.ini, with Quorva's own
rem FTP client; temp\dummy_file.txt says that a transfer is running. The exit status is the
rem client's: 0 only when every transfer asked was done.
cd /d "%~dp0"
type nul > temp\dummy_file.txt
if not defined QUORVA_EXE set QUORVA_EXE=quorva
"%QUORVA_EXE%" --home "%CD%" ftp-run temp/FtpQuorva.ini
set status=%ERRORLEVEL%
del /q temp\dummy_file.txt 2>nul
exit /b %status%
