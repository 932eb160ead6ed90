# Generates a C++ source that contains files as bytes:
#   cmake -D OUTPUT=FILE -D HEADER=HEADER -D NAMES=NAME,… -D FILES=FILE,… -P embed_files.cmake
# HEADER declares what the source defines: embeddedFiles().
string(REPLACE "," ";" names "${NAMES}")
string(REPLACE "," ";" files "${FILES}")

set(arrays "")
set(entries "")
set(number 0)
foreach(name file IN ZIP_LISTS names files)
  math(EXPR number "${number} + 1")
  set(identifier "kFile${number}")
  file(READ "${file}" digits HEX)
  string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${digits}")
  string(APPEND arrays "constexpr char ${identifier}[] = {${bytes}};\n")
  string(APPEND entries "    {\"${name}\", {${identifier}, sizeof ${identifier}}},\n")
endforeach()

file(WRITE "${OUTPUT}" "#include \"${HEADER}\"

namespace quorvantis::phone {

namespace {

${arrays}
constexpr EmbeddedFile kFiles[] = {
${entries}};

}  // namespace

std::span<const EmbeddedFile> embeddedFiles() {
  return kFiles;
}

}  // namespace quorvantis::phone
")
