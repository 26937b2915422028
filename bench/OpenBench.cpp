// SPDX-License-Identifier: MIT
// How long opening a file takes, as a ratio to a bare fetch loop of libmdb over the same file with bound buffers of
// 200,000 bytes, and how much memory it needs. Usage: bench_open FILE [runs]
#include <glib.h>

#include <mdbtools.h>

#include "Measure.h"
#include "model/TAdmMDBFile.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace vellumo;

constexpr std::size_t bindSize = 200000;

std::size_t fetchWithLibrary(const char* path)
{
    auto* handle = mdb_open(path, MDB_NOFLAGS);
    mdb_set_bind_size(handle, bindSize);
    mdb_set_date_fmt(handle, "%m/%d/%Y %H:%M:%S");
    mdb_read_catalog(handle, MDB_TABLE);
    std::size_t rows = 0;
    for (unsigned i = 0; i < handle->catalog->len; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(handle->catalog, i));
        if (mdb_is_user_table(entry) == 0) continue;
        auto* table = mdb_read_table(entry);
        mdb_read_columns(table);
        std::vector<std::unique_ptr<char[]>> buffers;
        std::vector<int> lengths(table->num_cols);
        for (unsigned c = 0; c < table->num_cols; ++c) {
            buffers.push_back(std::make_unique<char[]>(bindSize));
            mdb_bind_column(table, static_cast<int>(c) + 1, buffers.back().get(), &lengths[c]);
        }
        mdb_rewind_table(table);
        while (mdb_fetch_row(table) != 0)
            ++rows;
        mdb_free_tabledef(table);
    }
    mdb_close(handle);
    return rows;
}

std::unique_ptr<TAdmMDBFile> openFile(const char* path, unsigned readers)
{
    auto file = std::make_unique<TAdmMDBFile>();
    file->setFullPath(path);
    OpenOptions options;
    options.readerCount = readers;
    if (!file->open(options)) std::exit(1);
    return file;
}

struct Content {
    std::size_t rows = 0;
    std::size_t cells = 0;
    std::size_t textBytes = 0;
};

Content contentOf(const TAdmMDBFile& file)
{
    Content content;
    for (const auto& table : file.tables()) {
        content.rows += table->rows().rowCount();
        content.cells += table->rows().rowCount() * table->columns().size();
        for (const auto& group : table->rows().groups())
            for (const auto& chunk : group.texts)
                content.textBytes += chunk.bytes().size();
    }
    return content;
}

// Peak resident memory of a child process that runs `work`, in bytes.
template <typename Work> std::size_t peakBytes(Work work)
{
    const auto child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    struct rusage usage { };
    wait4(child, &status, 0, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs("usage: bench_open FILE [runs]\n", stderr);
        return 2;
    }
    const char* path = argv[1];
    const int runs = argc > 2 ? std::atoi(argv[2]) : 5;

    const auto idle = peakBytes([] {});
    Content content;
    const auto peak = peakBytes([&] { openFile(path, 0); });
    content = contentOf(*openFile(path, 0));

    const auto reference = bench::medianSeconds(runs, [&] { fetchWithLibrary(path); });
    std::printf("%zu rows, %zu cells, %.1f MB of text\n", content.rows, content.cells,
        static_cast<double>(content.textBytes) / 1e6);
    std::printf("bare fetch loop      %7.3f s\n", reference);
    for (const unsigned readers : {1U, 2U}) {
        const auto time = bench::medianSeconds(runs, [&] { openFile(path, readers); });
        std::printf("open, %u reader(s)    %7.3f s   %.3f of the loop\n", readers, time, time / reference);
    }
    const auto allowed = static_cast<double>(content.textBytes + 4 * content.cells) * 1.25 + (64 << 20);
    std::printf("peak memory          %7.1f MB   %.2f of text + 4 bytes a cell + 25 %% + 64 MiB\n",
        static_cast<double>(peak - idle) / 1e6, static_cast<double>(peak - idle) / allowed);
    return 0;
}
