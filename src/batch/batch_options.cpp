#include "batch/batch_options.h"

#include <set>

#include "core/numbers.h"

namespace osm::batch {

namespace {

int integerArg(const std::string& opt, const std::string& text) {
    if (!IsNumber(text) || Val(text) != static_cast<double>(static_cast<long>(Val(text))))
        throw UsageError{opt + " needs a whole number, not '" + text + "'"};
    return static_cast<int>(Val(text));
}

std::vector<int> listArg(const std::string& opt, const std::string& text) {
    std::vector<int> out;
    size_t start = 0;
    while (start <= text.size()) {
        const size_t comma = text.find(',', start);
        const std::string item = text.substr(start, comma == std::string::npos ? std::string::npos : comma - start);
        out.push_back(integerArg(opt, item));
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    return out;
}

}  // namespace

std::string UsageText() {
    return "usage: osm-batch [options]\n"
           "       osm-batch [options] compare BASE OTHER... [--jobs N] [--out-dir DIR]\n"
           "       osm-batch [options] ensemble SPEC [--jobs N] [--out-dir DIR]\n"
           "       osm-batch [--folder DIR] process-hydro --from SCENARIO.sts --out NAME.sts [--title TEXT]\n"
           "Runs the Ostrel Gorge Ecosystem Model without the desktop program.\n\n"
           "  --folder DIR          program folder (default: the repository's data/)\n"
           "  --phys-only           run the physical model only\n"
           "  --start-year YY       first calendar year, two digits from 1900 (default 48)\n"
           "  --years N             years to simulate (default 50)\n"
           "  --overlay             run twice, the second as the overlaid run\n"
           "  --dump FILE           write the results dump (all variables and reaches\n"
           "                        unless --vars / --reaches choose)\n"
           "  --vars LIST           comma list of graph-table rows for the dump (from 0;\n"
           "                        see --list-vars)\n"
           "  --reaches LIST        comma list of reach numbers for the dump\n"
           "  --csv FILE            every stored value in long form:\n"
           "                        run,var,sub,reach,month,value\n"
           "  --netcdf FILE         the results as a CF-conventions NetCDF-4 file\n"
           "                        (dimensions run, time, reach, set)\n"
           "  --phy, --bhp, --fis, --rec, --trb, --exp, --grs, --reach-breaks FILE\n"
           "                        use FILE instead of the default file of that kind\n"
           "  --policy FILE         apply a release policy file (.pol) before the run:\n"
           "                        diurnal scenarios, release trace, spikes and\n"
           "                        experimental temperature (see docs/policy_file.md)\n"
           "  --list-vars           list the graph-table rows after start-up and stop\n"
           "  --help                this text\n\n"
           "Every result file gets a sidecar FILE.json with the program version, the\n"
           "mode, the years and the SHA-256 of every input file read (NetCDF: in its\n"
           "global attributes).\n\n"
           "compare runs each scenario (a policy .pol, an experimental release .exp or\n"
           "a flow scenario .sts of the program folder) over the same years with the\n"
           "same other inputs, writes each run's long form NAME.csv and comparison.csv\n"
           "(mean of each variable, set and reach; difference and percent difference\n"
           "from BASE) into DIR, and prints a summary.\n"
           "ensemble makes the runs of SPEC (see docs/ensemble_spec.md) and writes\n"
           "ensemble_parameters.csv, ensemble_percentiles.csv (5th, 50th, 95th) and\n"
           "ensemble_median.csv (long form) into DIR.\n"
           "  --jobs N              runs side by side (default: one per core)\n"
           "  --out-dir DIR         folder of the files of compare and ensemble (default .)\n"
           "A run that faults is named with its fault; the other runs are kept.\n\n"
           "process-hydro runs the hydropower scheduler and the flow router of the\n"
           "folder's hydro folder for every volume level and month, with the flow limits,\n"
           "minimum flows and volume levels of SCENARIO.sts, and writes NAME.sts into the\n"
           "program folder (title: TEXT, or that of SCENARIO.sts).\n\n"
           "Exit status: 0 success, 1 fault, 2 bad usage.\n";
}

Options ParseOptions(int argc, char** argv, const std::string& defaultFolder) {
    static const std::set<std::string> fileKinds = {"phy", "bhp", "fis", "rec", "trb",
                                                    "exp", "grs", "reach-breaks"};
    Options o;
    o.folder = defaultFolder;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        auto value = [&]() -> std::string {
            if (i + 1 >= argc) throw UsageError{a + " needs a value"};
            return argv[++i];
        };
        if (a == "--help" || a == "-h") o.help = true;
        else if (a == "--folder") o.folder = value();
        else if (a == "--phys-only") o.physOnly = true;
        else if (a == "--start-year") o.startYear = integerArg(a, value());
        else if (a == "--years") o.years = integerArg(a, value());
        else if (a == "--overlay") o.overlay = true;
        else if (a == "--dump") o.dumpFile = value();
        else if (a == "--csv") o.csvFile = value();
        else if (a == "--netcdf") o.netcdfFile = value();
        else if (a == "--vars") o.vars = listArg(a, value());
        else if (a == "--reaches") o.reaches = listArg(a, value());
        else if (a == "--list-vars") o.listVars = true;
        else if (a == "--policy") o.policyFile = value();
        else if (a == "process-hydro") o.processHydro = true;
        else if (a == "--from" && o.processHydro) o.hydroFrom = value();
        else if (a == "--out" && o.processHydro) o.hydroOut = value();
        else if (a == "--title" && o.processHydro) o.hydroTitle = value();
        else if (a.rfind("--", 0) == 0 && fileKinds.count(a.substr(2))) o.files[a.substr(2)] = value();
        else if ((a == "compare" || a == "ensemble") && o.command.empty() && !o.processHydro) o.command = a;
        else if (a == "--jobs") {
            o.jobs = integerArg(a, value());
            if (o.jobs < 1) throw UsageError{"--jobs needs a whole number from 1"};
        } else if (a == "--out-dir") o.outDir = value();
        else if (a.rfind("-", 0) != 0 && o.command == "compare") o.scenarios.push_back(a);
        else if (a.rfind("-", 0) != 0 && o.command == "ensemble" && o.specFile.empty()) o.specFile = a;
        else throw UsageError{"unknown option '" + a + "'"};
    }
    if (o.command == "compare" && o.scenarios.size() < 2)
        throw UsageError{"compare needs a base scenario and at least one other"};
    if (o.command == "ensemble" && o.specFile.empty()) throw UsageError{"ensemble needs a spec file"};
    if (!o.command.empty() && (o.overlay || !o.dumpFile.empty() || !o.csvFile.empty()))
        throw UsageError{o.command + " writes its files into --out-dir; --overlay, --dump and --csv are for one run"};
    if (o.processHydro && (o.hydroFrom.empty() || o.hydroOut.empty()))
        throw UsageError{"process-hydro needs --from SCENARIO.sts and --out NAME.sts"};
    return o;
}

}  // namespace osm::batch
