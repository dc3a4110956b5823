# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A certificate authority of our own, and what it signs. Made by openssl, good for a few days."""

import datetime
import subprocess

_CONFIGURATION = """\
[ca]
default_ca = authority
[authority]
database = {home}/index.txt
serial = {home}/serial
new_certs_dir = {home}
certificate = {home}/authority.crt
private_key = {home}/authority.key
default_md = sha256
policy = name
x509_extensions = server
unique_subject = no
[name]
commonName = supplied
[server]
basicConstraints = critical,CA:FALSE
subjectAltName = DNS:{domain}
"""


def _openssl(*arguments):
    done = subprocess.run(["openssl", *arguments], stdin=subprocess.DEVNULL, capture_output=True, text=True)
    if done.returncode:
        raise RuntimeError(f"openssl {arguments[0]} failed: {done.stderr.strip()}")


class Authority:
    """A certificate authority in `directory`; `certificate` is the file that those who trust it are given."""

    def __init__(self, directory, name="protoLink private authority"):
        self.directory = directory
        directory.mkdir(parents=True, exist_ok=True)
        self.key = directory / "authority.key"
        self.certificate = directory / "authority.crt"
        _openssl("req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "7",
                 "-subj", f"/CN={name}", "-addext", "keyUsage=critical,keyCertSign",
                 "-keyout", str(self.key), "-out", str(self.certificate))

    def issue(self, domain, begin=None, end=None):
        """Signs a certificate for `domain`, good from now for a week, or from `begin` to `end` (datetimes in UTC).
        Gives the files of the certificate and of its key."""
        now = datetime.datetime.now(datetime.timezone.utc)
        begin, end = begin or now - datetime.timedelta(days=1), end or now + datetime.timedelta(days=7)
        key, request, certificate = (self.directory / f"{domain}.{kind}" for kind in ("key", "csr", "crt"))
        configuration = self.directory / "authority.cnf"
        configuration.write_text(_CONFIGURATION.format(home=self.directory, domain=domain))
        (self.directory / "index.txt").write_text("")
        _openssl("req", "-new", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
                 "-subj", f"/CN={domain}", "-keyout", str(key), "-out", str(request))
        _openssl("ca", "-batch", "-config", str(configuration), "-create_serial", "-notext",
                 "-startdate", begin.strftime("%Y%m%d%H%M%SZ"), "-enddate", end.strftime("%Y%m%d%H%M%SZ"),
                 "-in", str(request), "-out", str(certificate))
        return certificate, key
