#include "diagnostics/crash_lines.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>

namespace fleetor {

namespace {

/// The note that the linker left in the module; reads nothing but what the loader has mapped.
void addBuildId(CrashLine& line, const dl_find_object& module) {
  const auto* const start = static_cast<const char*>(module.dlfo_map_start);
  const auto* const header = reinterpret_cast<const ElfW(Ehdr)*>(start);
  if (std::memcmp(header->e_ident, ELFMAG, SELFMAG) != 0) return;
  const auto* const segments = reinterpret_cast<const ElfW(Phdr)*>(start + header->e_phoff);
  for (int i = 0; i < header->e_phnum; ++i) {
    if (segments[i].p_type != PT_NOTE) continue;
    const char* at =
        start + (module.dlfo_link_map->l_addr + segments[i].p_vaddr - std::bit_cast<std::uintptr_t>(start));
    const char* const end = at + segments[i].p_memsz;
    while (at + sizeof(ElfW(Nhdr)) <= end) {
      const auto* const note = reinterpret_cast<const ElfW(Nhdr)*>(at);
      const auto padded = [&](std::size_t size) { return (size + 3) & ~std::size_t{3}; };
      const char* const name = at + sizeof *note;
      const char* const id = name + padded(note->n_namesz);
      at = id + padded(note->n_descsz);
      if (note->n_type != NT_GNU_BUILD_ID || note->n_namesz != 4 || std::memcmp(name, "GNU", 4) != 0)
        continue;
      line.text(" ");
      for (std::size_t byte = 0; byte < note->n_descsz; ++byte)
        line.hex(static_cast<unsigned char>(id[byte]), 2);
      return;
    }
  }
}

}  // namespace

CrashLine& CrashLine::text(const char* piece) {
  const std::size_t length = std::min(std::strlen(piece), text_.size() - 1 - size_);
  std::memcpy(text_.data() + size_, piece, length);
  size_ += length;
  return *this;
}

CrashLine& CrashLine::digits(std::uint64_t number, unsigned base, int least) {
  std::array<char, 24> reversed{};
  std::size_t count = 0;
  for (; number != 0 || count < static_cast<std::size_t>(least); number /= base)
    reversed[count++] = "0123456789abcdef"[number % base];
  for (; count > 0 && size_ < text_.size() - 1; --count)
    text_[size_++] = reversed[count - 1];
  return *this;
}

void CrashLine::write(int descriptor) {
  text_[size_++] = '\n';
  for (std::size_t written = 0; written < size_;) {
    const ssize_t now = ::write(descriptor, text_.data() + written, size_ - written);
    if (now < 0 && errno != EINTR) return;
    if (now > 0) written += static_cast<std::size_t>(now);
  }
}

bool isInModule(std::uintptr_t address) {
  dl_find_object module{};
  // The only look-up of modules that takes no lock.
  return _dl_find_object(std::bit_cast<void*>(address), &module) == 0;
}

void addPlace(CrashLine& line, std::uintptr_t address, const char* program) {
  dl_find_object module{};
  if (_dl_find_object(std::bit_cast<void*>(address), &module) != 0) {
    line.text("?");
    return;
  }
  // Only the file name: folders may contain the user's name.
  const char* const path = module.dlfo_link_map->l_name;
  const char* const slash = std::strrchr(path, '/');
  const char* const name = slash ? slash + 1 : path;
  line.text(*name ? name : program).text("+0x").hex(address - module.dlfo_link_map->l_addr);
  addBuildId(line, module);
}

}  // namespace fleetor
