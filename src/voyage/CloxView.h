// The Clocks screen ("Clox"): a table screen of one row a day (Clox_Rows) with Sundays in
// red, the ship time typed into its last column, and the ship-time items of its heading
// pop-up when the voyage plan is followed.
#pragma once

#include "shell/cGeneralForm.h"
#include "voyage/Clox_Rows.h"

namespace kelmoran {

class CloxView : public cGeneralForm, public cEditTarget {
  public:
    explicit CloxView(QWidget* window = nullptr, cSubClass* hook = nullptr);

    void CalcDates() override;
    void Menu_PopUp(const std::string& caption) override;
    void SysMsg_KeyDown(int32_t key, int32_t shift) override;
    void SysMsg_KeyPress(int32_t character) override;
    // cEditTarget: a typed ship time.
    void Edit_Commit(const EditSession& s, double value, const std::string& text) override;

    const CloxRows& Rows() const { return rows_; }
    // The ship-time items, as the File menu and the pop-up call them.
    void Calc_Ship_Time();
    void Apply_To_Voyage();
    void Use_Plan_For_Ship_Time();

    static constexpr uint32_t kSundayRed = 0xC00000;

  private:
    bool Edit_Ship_Time(int32_t firstKey);
    void After_Change();

    CloxRows rows_;
};

}  // namespace kelmoran
