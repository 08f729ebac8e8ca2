#pragma once
// A bare river for the production steps: the dam row and two run reaches of one
// mile, two slices of 2 ft, the months table, and the default production
// parameters; each test fills the flows and tables its case needs.
#include "core/model.h"
#include "core/reaches.h"
#include "core/start_up.h"
#include "support/collect_messages.h"
#include "support/test_folder.h"

namespace osm::test {

struct ProductionRiver {
    TestFolder f;
    Model m;
    CollectMessages messages;
    Production& pr = m.production;
    Physical& ph = m.physical;

    ProductionRiver() {
        m.messages = &messages;
        BuildMonthsTable(m);
        m.main.NSlices = 2;
        ReadReachFile(m, f.Write("Reaches.csv", "\"t\",3,2,3\r\n\"a\",\"b\",\"c\",\"d\"\r\n"
                                                "1,\"Dam\",0,0.5\r\n2,\"Upper\",0.5,1.5\r\n3,\"Lower\",1.5,2.5\r\n"));
        m.main.MonthIdx = 6;  // June 1948
        m.morph.MgLPerGFt3 = 1000.0f / 28.317f;
        pr.OxyExchange = 0.8f, pr.GRConstA = 475, pr.GRConstB = 40, pr.GRConstC = 33.5f, pr.OutflowO2 = 8.5f;
        pr.FineWgt = 2, pr.BaseLightExt = 0.06f, pr.LightExtTurb = 0.01f, pr.AlgaeMax = 3, pr.PhotoEffic = 0.25f;
        pr.LakeDetritus = 0.5f, pr.OstrelDetritus = 0.8f, pr.AlgaeDetritus = 0.3f, pr.DetSink = 2;
        pr.NatDetritus = 3, pr.TribDetritus = 20;
        pr.BaseBenthos = 5, pr.BenthosGrowthEff = 0.2f, pr.BaseMort = 0.3f, pr.MortQ10 = 2, pr.Colonize = 0.05f;
        pr.LakeDrift = 0.02f, pr.DriftRate = 0.01f, pr.DriftSink = 0.5f, pr.NatDrift = 0.05f;
        pr.MaxRToMort = 3, pr.AlgaeAvail = 0.5f, pr.DryPower = 1, pr.ScourSand = 500, pr.ScourKeep = 0.8f;
        pr.LabileAlgal = 0.6f, pr.LabileTerr = 0.3f, pr.TerrDetritus = 0.0005f, pr.DetConsume = 0.05f;
        pr.RefractRate = 0.5f;
        for (int r = 1; r <= 3; ++r) {
            ph.MeanFlow(r) = 1000;
            ph.MeanWidth(r) = 100;
            ph.MinStageWidth(r) = 100;
            ph.MaxStageWidth(r) = 100;
        }
    }
};

}  // namespace osm::test
