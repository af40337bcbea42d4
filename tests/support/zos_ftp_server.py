"""A small FTP server on 127.0.0.1 that answers as a z/OS FTP server does for what Quorva
uses: 'HLQ.LIB(MEMBER)' names mapped to ROOT/HLQ.LIB/MEMBER, the host's 550 and 450 replies,
records past LRECL (80: SITE LRECL is for new data sets only) truncated, trailing blanks dropped unless SITE TRAILINGBLANKS, SITE
answered 200 with "Unrecognized parameter" lines. One fault can be asked for, or FTPS.

Usage: zos_ftp_server.py ROOT PORT_FILE USER PASSWORD [FAULT [SECONDS]]
FAULT: in-use, drop-retr, drop-stor, slow-retr; or tls: explicit FTPS (AUTH TLS, then TLS
required on the control and the data connections) with a throwaway certificate for
127.0.0.1, written to ROOT.crt for the client to trust.
"""

import logging
import os
import re
import sys
import time

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import DTPHandler, FTPHandler
from pyftpdlib.servers import FTPServer

ROOT, PORT_FILE, USER, PASSWORD = sys.argv[1:5]
FAULT = sys.argv[5] if len(sys.argv) > 5 else ""
SECONDS = float(sys.argv[6]) if len(sys.argv) > 6 else 5.0
NAME = re.compile(r"^'?([A-Z0-9@#$.]+)\(([A-Z0-9@#$]+)\)'?$")
KNOWN_SITE = {"LRECL", "RECFM", "BLKSIZE", "TRAILINGBLANKS", "NOTRAILINGBLANKS",
              "SBDATACONN"}


def member_path(path):
    """ROOT/LIB and ROOT/LIB/MEMBER for a quoted name, or None."""
    match = NAME.match(os.path.basename(path))
    if not match:
        return None
    library = os.path.join(ROOT, match.group(1))
    return library, os.path.join(library, match.group(2)), match.group(0)


class HostRecords:
    def close(self):
        # Records as the host keeps them: cut at LRECL, trailing blanks dropped.
        if (not self._closed and self.receive and self.transfer_finished
                and self.file_obj is not None and not self.file_obj.closed):
            self.file_obj.flush()
            channel = self.cmd_channel
            with open(self.file_obj.name, "rb") as stored:
                records = stored.read().split(b"\n")
            if records and records[-1] == b"":
                records.pop()
            # TYPE A: the records arrive with CRLF ends.
            records = [r[:-1] if r.endswith(b"\r") else r for r in records]
            truncated = any(len(r) > channel.lrecl for r in records)
            records = [r[:channel.lrecl] for r in records]
            if not channel.trailing_blanks:
                records = [r.rstrip(b" ") for r in records]
            with open(self.file_obj.name, "wb") as stored:
                stored.write(b"".join(r + b"\n" for r in records))
            if truncated:
                self._resp = ("250 Transfer completed (data was truncated)", logging.debug)
            else:
                self._resp = ("250 Transfer completed successfully.", logging.debug)
        super().close()


class HostDTP(HostRecords, DTPHandler):
    pass


class HostCommands:
    lrecl = 80
    trailing_blanks = False

    def pre_process_command(self, line, cmd, arg):
        if cmd == "SITE":
            self.site(arg or "")
            return
        super().pre_process_command(line, cmd, arg)

    def site(self, arg):
        lines = []
        for word in arg.split():
            key, _, value = word.partition("=")
            key = key.upper()
            if key not in KNOWN_SITE or (key == "SBDATACONN" and "9999" in value):
                lines.append("200-Unrecognized parameter '%s' on SITE command." % word)
            elif key == "TRAILINGBLANKS":
                self.trailing_blanks = True
        self.push("".join(l + "\r\n" for l in lines))
        self.respond("200 SITE command was accepted")

    def ftp_RETR(self, file):
        names = member_path(file)
        if names is None:
            return super().ftp_RETR(file)
        library, member, shown = names
        if FAULT == "slow-retr":
            time.sleep(SECONDS)
        if FAULT == "drop-retr":
            self.close()
            return None
        if not os.path.isdir(library):
            self.respond("550 Data set %s not found" % os.path.basename(library))
            return None
        if FAULT == "in-use":
            self.respond("450 Data set %s is allocated to another job and is unavailable "
                         "for RETR command" % os.path.basename(library))
            return None
        if not os.path.isfile(member):
            self.respond("550 Request nonexistent member %s to be retrieved." % shown)
            return None
        return super().ftp_RETR(member)

    def ftp_STOR(self, file, mode="w"):
        names = member_path(file)
        if names is None:
            return super().ftp_STOR(file, mode)
        library, member, _ = names
        if not os.path.isdir(library):
            self.respond("550 Data set %s not found" % os.path.basename(library))
            return None
        if FAULT == "drop-stor":
            # The host has already emptied the member when the line drops.
            with open(member, "wb"):
                pass
            self.close()
            return None
        return super().ftp_STOR(member, mode)


class HostHandler(HostCommands, FTPHandler):
    dtp_handler = HostDTP


def tls_handler():
    """The handler for FTPS, its certificate made here and written to ROOT.crt."""
    from OpenSSL import SSL, crypto
    from pyftpdlib.handlers import TLS_DTPHandler, TLS_FTPHandler

    key = crypto.PKey()
    key.generate_key(crypto.TYPE_RSA, 2048)
    cert = crypto.X509()
    cert.get_subject().CN = "127.0.0.1"
    cert.set_serial_number(1)
    cert.gmtime_adj_notBefore(-60)
    cert.gmtime_adj_notAfter(24 * 3600)
    cert.set_issuer(cert.get_subject())
    cert.set_pubkey(key)
    cert.add_extensions([crypto.X509Extension(b"subjectAltName", False, b"IP:127.0.0.1"),
                         crypto.X509Extension(b"basicConstraints", True, b"CA:TRUE")])
    cert.sign(key, "sha256")
    with open(ROOT + ".crt", "wb") as out:
        out.write(crypto.dump_certificate(crypto.FILETYPE_PEM, cert))
    context = SSL.Context(SSL.TLS_SERVER_METHOD)
    context.use_certificate(cert)
    context.use_privatekey(key)
    # Clients resume the control connection's session on the data connection.
    context.set_session_id(b"quorva-test")

    class HostTLSDTP(HostRecords, TLS_DTPHandler):
        def readable(self):
            # libcurl secures the data connection before RETR or STOR, which the plain
            # handler would take for a client gone away.
            if getattr(self, "_ssl_accepting", False):
                return True
            return super().readable()

    class HostTLSHandler(HostCommands, TLS_FTPHandler):
        dtp_handler = HostTLSDTP
        ssl_context = context
        tls_control_required = True
        tls_data_required = True

    return HostTLSHandler


def main():
    logging.basicConfig(level=logging.CRITICAL)
    authorizer = DummyAuthorizer()
    authorizer.add_user(USER, PASSWORD, ROOT, perm="elradfmw")
    handler = tls_handler() if FAULT == "tls" else HostHandler
    handler.authorizer = authorizer
    handler.banner = "FTPD1 IBM FTP CS at TEST, ready."
    handler.passive_ports = None
    server = FTPServer(("127.0.0.1", 0), handler)
    port = server.socket.getsockname()[1]
    with open(PORT_FILE + ".tmp", "w") as out:
        out.write(str(port))
    os.rename(PORT_FILE + ".tmp", PORT_FILE)
    server.serve_forever()


if __name__ == "__main__":
    main()
