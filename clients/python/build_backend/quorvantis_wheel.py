"""Packs the package as a wheel, with the standard library alone: pip fetches nothing to install it (PEP 517, PEP 427)."""

import base64
import hashlib
import tarfile
import tomllib
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
OLDEST_DATE = (1980, 1, 1, 0, 0, 0)  # that a zip file can hold: the same sources give the same bytes


def project():
    return tomllib.loads((ROOT / "pyproject.toml").read_text("utf-8"))["project"]


def stem():
    facts = project()
    return f"{facts['name'].replace('-', '_')}-{facts['version']}"


def metadata_files():
    """What is in the .dist-info folder, but for RECORD: name and content of each file."""
    facts = project()
    metadata = [f"Metadata-Version: 2.1\nName: {facts['name']}\nVersion: {facts['version']}\n",
                f"Summary: {facts['description']}\nRequires-Python: {facts['requires-python']}\n",
                f"License: {facts['license']['text']}\nDescription-Content-Type: text/markdown\n\n",
                (ROOT / facts["readme"]).read_text("utf-8")]
    entry_points = [f"[{group}]\n" + "".join(f"{name} = {value}\n" for name, value in points.items())
                    for group, points in facts["entry-points"].items()]
    wheel = "Wheel-Version: 1.0\nGenerator: quorvantis_wheel\nRoot-Is-Purelib: true\nTag: py3-none-any\n"
    return {"METADATA": "".join(metadata), "WHEEL": wheel, "entry_points.txt": "\n".join(entry_points)}


def modules():
    return sorted(path for path in (ROOT / "src/quorvantis_push").iterdir() if path.is_file())


def prepare_metadata_for_build_wheel(metadata_directory, config_settings=None):
    folder = Path(metadata_directory) / f"{stem()}.dist-info"
    folder.mkdir()
    for name, content in metadata_files().items():
        (folder / name).write_text(content, "utf-8")
    return folder.name


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    info = f"{stem()}.dist-info"
    files = {f"quorvantis_push/{path.name}": path.read_bytes() for path in modules()}
    files |= {f"{info}/{name}": content.encode() for name, content in metadata_files().items()}
    record = "".join(f"{name},sha256={digest_of(content)},{len(content)}\n" for name, content in files.items())
    files[f"{info}/RECORD"] = f"{record}{info}/RECORD,,\n".encode()

    wheel = Path(wheel_directory) / f"{stem()}-py3-none-any.whl"
    with zipfile.ZipFile(wheel, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, content in files.items():
            entry = zipfile.ZipInfo(name, OLDEST_DATE)
            entry.external_attr = 0o644 << 16
            archive.writestr(entry, content)
    return wheel.name


def build_sdist(sdist_directory, config_settings=None):
    archive = Path(sdist_directory) / f"{stem()}.tar.gz"
    with tarfile.open(archive, "w:gz", format=tarfile.PAX_FORMAT) as packed:
        for path in ("pyproject.toml", "README.md", "build_backend", "src"):
            packed.add(ROOT / path, f"{stem()}/{path}",
                       filter=lambda entry: None if "__pycache__" in entry.name else entry)
    return archive.name


def digest_of(content):
    return base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
