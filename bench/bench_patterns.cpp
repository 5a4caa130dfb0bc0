// Reading of large text patterns, as a ratio to one plain read of the same file in the same run ("reads").
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "base/os.hpp"
#include "base/text_file.hpp"
#include "bench/plain_read.hpp"
#include "patterns/prf.hpp"
#include "patterns/read_pattern.hpp"

namespace {

using namespace vntl;

double Milliseconds(const std::function<void()>& work) {
    double best = 1e30;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        best = std::min(best, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

using Reader = std::function<bool(const std::string& name, Diffraction_Pattern_Type&)>;

void Read_By(benchmark::State& state, const char* ending, const Reader& reader, const std::function<void(std::FILE*)>& write) {
    const std::string name = (std::filesystem::temp_directory_path() / "vantrelo_bench").string() + ending;
    std::FILE* file = std::fopen(name.c_str(), "w");
    write(file);
    std::fclose(file);
    const double plain = Milliseconds([&] { Plain_Read(name); });
    Diffraction_Pattern_Type pattern;
    double best = 1e30;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        if (!reader(name, pattern)) state.SkipWithError("not read");
        best = std::min(best, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    state.counters["reads"] = best / plain;
    state.counters["points"] = pattern.npts;
    IOsDeleteFile(name);
}

void Read(benchmark::State& state, const char* ending, const char* mode, const std::function<void(std::FILE*)>& write) {
    Read_By(
        state, ending, [mode](const std::string& name, Diffraction_Pattern_Type& p) { return Read_Pattern(name, p, mode).ok(); }, write);
}

void Read_Xysigma(benchmark::State& state) {
    Read(state, ".xye", "XYSIGMA", [](std::FILE* file) {
        for (int i = 0; i < 1'000'000; ++i)
            std::fprintf(file, "%8.4f %6d %5.1f\n", 5 + 1e-4 * i, (i % 6000 * 7919) % 5000, (i % 300) / 10.0);
    });
}
BENCHMARK(Read_Xysigma)->Unit(benchmark::kMillisecond);

void Read_Free_Format(benchmark::State& state) {
    Read(state, ".dat", "FREEFORMAT", [](std::FILE* file) {
        std::fprintf(file, "title\n5.0 0.0001 104.9999\n");
        for (int i = 0; i < 1'000'000; ++i) std::fprintf(file, i % 10 == 9 ? "%8d\n" : "%8d", (i % 6000 * 7919) % 50000);
    });
}
BENCHMARK(Read_Free_Format)->Unit(benchmark::kMillisecond);

// Files of about 10 MB in the layout of each format: one row a format, its ending, mode, and what it writes.
struct Format_File {
    const char* name;
    const char* ending;
    const char* mode;
    void (*write)(std::FILE*);
};

int Count(int i) { return (i % 6000 * 7919) % 50000; }

// `n` numbers, ten a line.
void Ten_A_Line(std::FILE* file, int n, const char* format) {
    for (int i = 0; i < n; ++i) {
        std::fprintf(file, format, Count(i));
        if (i % 10 == 9) std::fputc('\n', file);
    }
}

// Binary files: numbers at their places in a head, and counts behind it.
template <class Number>
void Put(std::string& head, std::size_t at, Number number) {
    std::memcpy(head.data() + at, &number, sizeof number);
}

template <class Number>
void Counts_Behind(std::FILE* file, const std::string& head, int n) {
    std::fwrite(head.data(), 1, head.size(), file);
    for (int i = 0; i < n; ++i) {
        const auto count = static_cast<Number>(Count(i));
        std::fwrite(&count, 1, sizeof count, file);
    }
}

constexpr Format_File format_files[] = {
    {"R3B", ".dat", "R3B",
     [](std::FILE* f) {
         std::fprintf(f, "r\ntitle\nmore\n%13d.%9s%8.3f%45s%9.3f%9.3f%9.3f%9.3f\n%4d\n", 1000, "", 5.0, "", 0.01, 300.0, 0.0, 300.0, 9990);
         Ten_A_Line(f, 9990, " 1%8d");
         std::fprintf(f, "end\n");
     }},
    {"NLS", ".dat", "NLS",
     [](std::FILE* f) {
         std::fprintf(f, "! title\n5.0 0.0001 65.0\n");
         for (int i = 0; i < 120000; ++i) {
             for (int k = 0; k < 10; ++k) std::fprintf(f, i % 2 == 0 ? "%8d" : "%8d", i % 2 == 0 ? Count(i * 10 + k) : 30 + k);
             std::fputc('\n', f);
         }
     }},
    {"G41", ".dat", "G41",
     [](std::FILE* f) {
         std::fprintf(f, "title\na\nb\n1000000 300.0 300.0 0 1000 1000\n5.0 0.0001 105.0\n");
         Ten_A_Line(f, 1000000, "%9d ");
     }},
    {"R3A", ".dat", "R3A",
     [](std::FILE* f) {
         std::fprintf(f, "title\n%16s%8.5f\n%8.3f\n%8d%8d\n", "", 0.00018, 5.0, 1000, 1000);
         Ten_A_Line(f, 1000000, " 1%6d");
     }},
    {"RAW", ".raw", "RAW",
     [](std::FILE* f) {
         std::string head(712 + 304, '\0');
         head.replace(0, 7, "RAW1.01");
         for (const auto& [at, number] : {std::pair{12, 1u}, {712, 304u}, {712 + 4, 2500000u}, {712 + 252, 4u}})
             Put(head, static_cast<std::size_t>(at), number);
         Put(head, 712 + 16, 5.0);
         Put(head, 712 + 176, 4e-5);
         Counts_Behind<float>(f, head, 2500000);
     }},
    {"RAW, Rigaku", ".raw", "RIGAKURAW",
     [](std::FILE* f) {
         std::string head(3158, '\0');
         head.replace(0, 2, "FI");
         Put(head, 2962, 5.0f);
         Put(head, 2970, 4e-5f);
         Put(head, 3154, 2500000);
         Counts_Behind<float>(f, head, 2500000);
     }},
    {"RAW, old text", ".raw", "RIGAKURAW",
     [](std::FILE* f) {
         std::fprintf(f, ".RAW\r");
         for (int line = 1; line < 38; ++line)
             std::fprintf(f, "%s\r", line == 22 ? "5.0" : line == 23 ? "0.0001" : line == 24 ? "1000000 1" : " ");
         for (int i = 0; i < 1000000; ++i) std::fprintf(f, "%8d.\r", Count(i));
     }},
    {"RD", ".rd", "RD",
     [](std::FILE* f) {
         std::string head(250, '\0');
         head.replace(0, 4, "V3RD");
         for (const auto& [at, number] : {std::pair{214, 2e-5}, {222, 5.0}, {230, 104.99998}})
             Put(head, static_cast<std::size_t>(at), number);
         Counts_Behind<unsigned short>(f, head, 5000000);
     }},
    {"DMC", ".dat", "DMC",
     [](std::FILE* f) {
         std::fprintf(f, "title\nline\n5.0 0.0001 65.0\n");
         Ten_A_Line(f, 600010, "%8d");
         std::fputc('\n', f);
         Ten_A_Line(f, 600010, "%8d");
     }},
    {"COLUMNS", ".xye", "COLUMNS",
     [](std::FILE* f) {
         std::fprintf(f, "# Wavelength: 4.066e-11 m\n# 2th_deg   I   sigma\n");
         for (int i = 0; i < 400000; ++i) std::fprintf(f, "%9.5f %8.2f %7.3f\n", 5 + 1e-4 * i, 0.1 * Count(i), 30 + 0.001 * Count(i));
     }},
    {"UXD", ".uxd", "SOCABIM",
     [](std::FILE* f) {
         std::fprintf(f, "_STEPSIZE=0.0001\n_STEPCOUNT=1000000\n_START=5.0\n_STEPTIME=1\n_COUNTS\n");
         Ten_A_Line(f, 1000000, "%9d ");
     }},
    {"RAS", ".ras", "RAS",
     [](std::FILE* f) {
         std::fprintf(f, "*RAS_DATA_START\n*RAS_HEADER_START\n*MEAS_DATA_COUNT \"400000\"\n*RAS_HEADER_END\n*RAS_INT_START\n");
         for (int i = 0; i < 400000; ++i) std::fprintf(f, "%.4f %d.0000 1.0000\r\n", 5 + 2e-4 * i, Count(i));
         std::fprintf(f, "*RAS_INT_END\n*RAS_DATA_END\n");
     }},
    {"ASC", ".asc", "ASC",
     [](std::FILE* f) {
         std::fprintf(f, "*TYPE = Raw\n*CLASS = ASCII\n*BEGIN\n*START = 5\n*STEP = 0.0001\n*COUNT = 1400000\n");
         for (int i = 0; i < 1400000; ++i) std::fprintf(f, i % 4 == 3 ? "%d\n" : "%d, ", Count(i));
         std::fprintf(f, "*END\n*EOF\n");
     }},
    {"CPI", ".cpi", "CPI",
     [](std::FILE* f) {
         std::fprintf(f, "SIETRONICS XRD SCAN\n5\n75\n0.0001\nCu\n1.5406\n1/1/2012\n2\na\nSCANDATA\n");
         for (int i = 0; i < 750000; ++i) std::fprintf(f, "%d.0000000\n", Count(i));
     }},
    {"CHI", ".chi", "CHI",
     [](std::FILE* f) {
         std::fprintf(f, "a\n2-Theta Angle (Degrees)\nIntensity\n 330000\n");
         for (int i = 0; i < 330000; ++i) std::fprintf(f, " %.7E  %.7E\n", 5 + 1e-4 * i, Count(i) / 7.0);
     }},
    {"MDI", ".MDI", "FreeFormat",
     [](std::FILE* f) {
         std::fprintf(f, "a\n5.0 0.0001 1.0 CU 1.5406 105.0 1000000\n");
         Ten_A_Line(f, 1000000, "%9d ");
     }},
    {"GSAS", ".gsa", "GSAS",
     [](std::FILE* f) {
         std::fprintf(f, "title\nBANK 1 1000000 100000 CONST 500.0 0.01 0 0 STD\n");
         Ten_A_Line(f, 1000000, " 1%6d");
     }},
    {"GSAS FXYE", ".gda", "GSASTOF",
     [](std::FILE* f) {
         std::fprintf(f, "title\nBANK 1 350000 350000 SLOG 1000.0 30000.0 0.0004 0 FXYE\n");
         for (int i = 0; i < 350000; ++i) std::fprintf(f, "%12.4f%12.4f%9.4f\n", 1000 + 0.1 * i, Count(i) / 7.0, 3 + i % 10 / 7.0);
     }},
    {"CSV", ".csv", "PANALYTICAL",
     [](std::FILE* f) {
         std::fprintf(
             f, "Title 1,sample\nData angle range,5,105\nScan step size,0.0001\nNo. of points,700000\n[Scan points]\nAngle,Intensity\n");
         for (int i = 0; i < 700000; ++i) std::fprintf(f, "%.4f,%d\n", 5 + 1e-4 * i, Count(i));
     }},
    {"UDF", ".udf", "PANALYTICAL",
     [](std::FILE* f) {
         std::fprintf(f, "SampleIdent,sample,/\nDataAngleRange,5.0,105.0,/\nScanStepSize,0.0001,/\nRawScan\n");
         for (int i = 0; i < 1000001; ++i) std::fprintf(f, i % 8 == 7 ? "%8d\n" : "%8d,", Count(i));
         std::fprintf(f, "\n");
     }},
    {"JCP", ".jcp", "PANALYTICAL",
     [](std::FILE* f) {
         std::fprintf(f,
                      "## TITLE= sample\n## FIRSTX= 5.0\n## LASTX= 105.0\n## DELTAX= 0.0001\n## NPOINTS= 900000\n## XYDATA= X++<Y..Y>\n");
         for (int i = 0; i < 180000; ++i)
             std::fprintf(f, "%9.3f %11.3f%11.3f%11.3f%11.3f%11.3f\n", 5 + 5e-4 * i, 1.0 * Count(i), 2.0, 3.0, 4.0, 5.0);
         std::fprintf(f, "## END=\n");
     }},
    {"XRDML", ".xrdml", "PANALYTICAL",
     [](std::FILE* f) {
         std::fprintf(f,
                      "<xrdMeasurement>\n<kAlpha1 unit=\"Angstrom\">1.54060</kAlpha1>\n<kAlpha2 unit=\"Angstrom\">1.54443</kAlpha2>\n"
                      "<kBeta unit=\"Angstrom\">1.39225</kBeta>\n<ratioKAlpha2KAlpha1>0.5</ratioKAlpha2KAlpha1>\n<positions "
                      "axis=\"2Theta\" unit=\"deg\">\n<startPosition>5.0</startPosition>\n"
                      "<endPosition>105.0</endPosition>\n</positions>\n<intensities unit=\"counts\">");
         for (int i = 0; i < 1800000; ++i) std::fprintf(f, "%d ", Count(i));
         std::fprintf(f, "</intensities>\n</xrdMeasurement>\n");
     }},
    {"CIF", ".cif", "CIF",
     [](std::FILE* f) {
         std::fprintf(f,
                      "data_x\n_pd_block_id sample\n_diffrn_radiation_wavelength 1.5406\nloop_\n_pd_proc_point_id\n"
                      "_pd_proc_2theta_corrected\n_pd_proc_intensity_total\n_pd_calc_intensity_total\n_pd_proc_intensity_bkg_calc\n"
                      "_pd_proc_ls_weight\n");
         for (int i = 0; i < 200000; ++i)
             std::fprintf(f, "%7d %9.4f %d(%d) %9.2f %7.2f %9.6f\n", i + 1, 5 + 5e-4 * i, Count(i), 1 + i % 300, Count(i + 1) / 1.1,
                          80 + i % 100 / 7.0, 1.0 / (1 + i % 300));
     }},
    {"Variable time", ".dat", "TIMEVARIABLE",
     [](std::FILE* f) {
         std::fprintf(f, "title\na\nb\nc\n5.0 0.0001 65.0\n");
         for (int i = 0; i < 600001; ++i) std::fprintf(f, i % 5 == 4 ? "%6.1f%10d\n" : "%6.1f%10d", 10.0, Count(i));
         std::fprintf(f, "\n");
     }},
};

// A refinement of 50,000 points and 5,000 reflections of two phases.
constexpr int refined_points = 50000, refined_reflections = 5000;

void Write_Classic(std::FILE* file) {
    const auto list = [file](int n, int a_line, auto put) {
        for (int i = 0; i < n; ++i) {
            put(i);
            if (i % a_line == a_line - 1 || i == n - 1) std::fputc('\n', file);
        }
    };
    std::fprintf(file, "title\n3111\n%8.3f%8.3f%8.5f%8d\n", 105.0, 5.0, 0.002, 1);
    std::fprintf(file, "%3d%7d%10.5f%10.5f%10.5f%10.5f%10.5f\n", 2, refined_points, 1.5406, 1.5444, 0.012, 0.01, 0.02);
    std::fprintf(file, "%5d%5d%5d%5d\n", refined_reflections / 2, refined_reflections / 2, 0, 0);
    for (int array = 0; array < 2; ++array) list(refined_points, 8, [&](int i) { std::fprintf(file, "%7d ", Count(i)); });
    list(refined_reflections, 8, [&](int i) {
        const int phase = 1 + i / (refined_reflections / 2);
        std::fprintf(file, "%10d", (phase << 27) + (1 << 24) + ((128 + i % 30) << 16) + ((128 + i % 7) << 8) + 120);
    });
    list(refined_reflections, 10, [&](int i) { std::fprintf(file, "%8.3f", 5 + 0.02 * i); });
    std::fprintf(file, "%8d\n%8.2f%8.2f\n", 1, 6.0, 7.0);
}

void Write_Columns(std::FILE* file) {
    std::fprintf(file, "title\n%3d%7d%12.5f%12.5f%12.5f%12.5f%12.5f\n", 2, refined_points, 1.5406, 1.5444, 0.012, 0.01, 0.02);
    std::fprintf(file, "%d %d 0 0\n0\n%-53s\n", refined_reflections / 2, refined_reflections / 2,
                 "2Theta Yobs Ycal Yobs-Ycal Backg Posr (hkl) K heads--");
    for (int i = 0; i < refined_points; ++i)
        std::fprintf(file, "%12.4f\t%8d\t%8d\t%8d\t%8d\n", 5 + 0.002 * i, Count(i), Count(i + 1), Count(i) - Count(i + 1), 80);
    for (int i = 0; i < refined_reflections; ++i) {
        const int phase = 1 + i / (refined_reflections / 2);
        if (i % (refined_reflections / 2) == 0) std::fprintf(file, "Phase: %d\n", phase);
        std::fprintf(file, "%12.4f%37s%8d\t(%3d%3d%3d)\t%3d%3d\n", 5 + 0.02 * i, "", phase, i % 30, i % 7, -8, phase, 1);
    }
}

bool Read_Refinement(const std::string& name, Diffraction_Pattern_Type& pattern) {
    PRF_Info_Add_Type info;
    return Read_Prf(name, pattern, info).ok() && info.nreflections == refined_reflections;
}
void Read_Classic(benchmark::State& state) { Read_By(state, ".prf", Read_Refinement, Write_Classic); }
void Read_Columns(benchmark::State& state) { Read_By(state, ".prf", Read_Refinement, Write_Columns); }
BENCHMARK(Read_Classic)->Unit(benchmark::kMillisecond);
BENCHMARK(Read_Columns)->Unit(benchmark::kMillisecond);

void Register_Formats() {
    for (const Format_File& format : format_files)
        benchmark::RegisterBenchmark(format.name, [&format](benchmark::State& state) {
            Read(state, format.ending, format.mode, format.write);
        })->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
    Register_Formats();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
