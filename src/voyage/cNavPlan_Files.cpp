#include "voyage/cNavPlan_Files.h"

#include <QFileDialog>
#include <QFileInfo>

#include "settings/SettingsRecord.h"
#include "shell/Drawing.h"
#include "shell/File_Dialogs.h"
#include "voyage/CloxView.h"
#include "voyage/Gpx_Route.h"
#include "voyage/M_Clox.h"
#include "voyage/Plan_Undo.h"
#include "voyage/Voyage_File.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

namespace {

bool On_Clocks() { return Shell.ScreenName == screen_key::Clox; }

CloxView* Clocks_Screen() { return dynamic_cast<CloxView*>(Shell.CurrentScreen); }

}  // namespace

std::string cNavPlan_Files::Plan_File_Name() const {
    return Voyage.Header.File_Named ? Voyage.Header.Path : std::string();
}

std::string cNavPlan_Files::Default_Plan_Name() const { return Settings.DefaultPlanFile; }

void cNavPlan_Files::Set_Default_Plan_Name(const std::string& name) {
    if (name.empty()) {
        Remove_As_Default(Settings);
        return;
    }
    // A plan with a file of its own but unsaved changes is saved first.
    if (Shell.PlanChanged && !Plan_File_Name().empty()) Save_Plan(Plan_File_Name());
    std::string message;
    if (!Set_As_Default(Voyage, Settings, message) && Shell.Host)
        Shell.Host->Message_Box(shell_text::MustSaveFirst, shell_text::SaveCancelled,
                                MsgButtons::OK);
}

bool cNavPlan_Files::Any_Way_Point_In_Use() const { return Voyage.Any_Way_Point_In_Use(); }

void cNavPlan_Files::Plan_Replaced() const {
    // Every screen that follows the plan shows it again; the Voyage screen rebuilds from
    // the plan each time it comes up.
    Voyage.Ship_Time.clear();
    if (Shell.CurrentScreen) Shell.CurrentScreen->CalcDates();
    if (Shell.Host) Shell.Host->Repaint();
}

void cNavPlan_Files::New_Plan() {
    if (Shell.PlanChanged && Shell.Host) {
        const MsgAnswer a =
            Shell.Host->Message_Box(voyage_file_text::SaveChangesNew,
                                    voyage_file_text::PlanChangedTitle, MsgButtons::YesNoCancel);
        if (a == MsgAnswer::Cancel) return;
        if (a == MsgAnswer::Yes) {
            const std::string name = Plan_File_Name();
            if (!(name.empty() ? Save_Plan_As() : Save_Plan(name))) return;
        }
    }
    Voyage.New_Plan(Shell.CurrentJD, Settings.FixSpeed);
    Plan_Replaced();
}

std::string cNavPlan_Files::Ask_File(bool save, const std::string& title) const {
    return Ask_File(save, title,
                    On_Clocks() ? voyage_file_text::CloxFilter : voyage_file_text::Filter);
}

std::string cNavPlan_Files::Ask_File(bool save, const std::string& title,
                                     const std::string& filter) const {
    if (Choose_File) return Choose_File(save, title, filter);
    const QString start = save ? Dialog_Start(Q(Plan_File_Name())) : Dialog_Folder();
    // The question of a file that exists is asked by us, in the program's own words.
    const QString path = Remember_Dialog_Folder(
        save ? QFileDialog::getSaveFileName(parent_, Q(title), start, Q(filter), nullptr,
                                            QFileDialog::DontConfirmOverwrite)
             : QFileDialog::getOpenFileName(parent_, Q(title), start, Q(filter)));
    return path.toStdString();
}

void cNavPlan_Files::Show_Error(const std::string& message) const {
    if (Shell.Host && !message.empty())
        Shell.Host->Message_Box(message, voyage_file_text::OpenTitle, MsgButtons::OK);
}

bool cNavPlan_Files::Open_Plan() {
    const std::string path = Ask_File(false, voyage_file_text::OpenTitle);
    return !path.empty() && Open_Plan_File(path);
}

bool cNavPlan_Files::Open_Plan_File(const std::string& path) {
    std::string message;
    if (!Load_Plan(path, Voyage, message)) {
        Show_Error(message);
        return false;
    }
    Plan_Replaced();
    return true;
}

bool cNavPlan_Files::Save_Plan(const std::string& name) {
    std::string message;
    if (!kelmoran::Save_Plan(name, Voyage, Settings, message)) {
        if (Shell.Host) Shell.Host->Message_Box(message, voyage_file_text::SaveAsTitle, MsgButtons::OK);
        return false;
    }
    return true;
}

bool cNavPlan_Files::Save_Plan_As() {
    std::string path = Ask_File(true, voyage_file_text::SaveAsTitle);
    if (path.empty()) return false;
    // A Clocks file passes through the same routines under its own extension.
    if (!On_Clocks()) path = With_Voy_Extension(path);
    if (QFileInfo::exists(Q(path)) && Shell.Host &&
        Shell.Host->Message_Box(voyage_file_text::ReplaceExisting,
                                voyage_file_text::AlreadyExists,
                                MsgButtons::OKCancel) == MsgAnswer::Cancel)
        return false;
    return Save_Plan(path);
}

void cNavPlan_Files::Read_Default_Plan() {
    kelmoran::Read_Default_Plan(Voyage, Settings, Shell.CurrentJD);
    Plan_Replaced();
}

void cNavPlan_Files::Empty_Undo_Stacks() {
    Plan_Undo.Reset();
    if (Shell.Host) Shell.Host->Menus_Changed();
}

void cNavPlan_Files::Clear_Clox_Current() { Voyage.Ship_Time.clear(); }

void cNavPlan_Files::Calculate_Ship_Time() {
    if (CloxView* c = Clocks_Screen()) {
        c->Calc_Ship_Time();
    } else {
        kelmoran::Calculate_Ship_Time(Voyage);
    }
}

void cNavPlan_Files::Apply_To_Voyage_Plan() {
    if (CloxView* c = Clocks_Screen()) {
        c->Apply_To_Voyage();
    } else {
        kelmoran::Apply_To_Voyage_Plan(Voyage);
    }
}

void cNavPlan_Files::Import_Route() {
    const std::string path = Ask_File(false, gpx_text::ImportTitle, gpx_text::Filter);
    if (path.empty()) return;
    std::string message;
    if (!Import_Gpx(path, Voyage, message)) {
        if (Shell.Host) Shell.Host->Message_Box(message, gpx_text::ImportTitle, MsgButtons::OK);
        return;
    }
    Plan_Replaced();
    if (Shell.Host) Shell.Host->Menus_Changed();
}

void cNavPlan_Files::Export_Route() {
    std::string message;
    if (!Voyage.Any_Way_Point_In_Use()) {
        if (Shell.Host)
            Shell.Host->Message_Box(gpx_text::NothingToExport, gpx_text::ExportTitle,
                                    MsgButtons::OK);
        return;
    }
    std::string path = Ask_File(true, gpx_text::ExportTitle, gpx_text::Filter);
    if (path.empty()) return;
    if (path.size() < 4 || path.compare(path.size() - 4, 4, ".gpx") != 0) path += ".gpx";
    if (!Export_Gpx(path, Voyage, message) && Shell.Host)
        Shell.Host->Message_Box(message, gpx_text::ExportTitle, MsgButtons::OK);
}

}  // namespace kelmoran
