#include <gtest/gtest.h>
#include "fakes/FakeListModel.h"
#include "fakes/FakePlatformLog.h"
#include "applist/DefaultAppListRenderer.h"
#include "support/HeadlessToolkit.h"
#include <iostream>
#include <execinfo.h>
#define PR(o,n) evas_object_smart_callback_add(o,n,[](void*d,Evas_Object*,void*){std::cout<<"CB "<<(const char*)d<<"\n"; for(auto&l:Log()) std::cout<<l.function<<": "<<l<<"\n"; ClearLog();},(void*)(#o " " n));

using namespace applist::test;
struct Open : DefaultAppListRenderer { using DefaultAppListRenderer::DefaultAppListRenderer; using DefaultAppListRenderer::m_window; using DefaultAppListRenderer::m_genlist; using DefaultAppListRenderer::m_focusItem;};
struct Explore : testing::Test {
  HeadlessToolkit toolkit{{getenv("APPLIST_TEST_THEME")}};
  FakeListModel model;
  DefaultAppListItem a{"Alpha","a"}, b{"Beta","b"}, c{"Gamma","c"};
  std::unique_ptr<Open> r;
  void SetUp() override { r = std::make_unique<Open>("org.vantu.applist"); r->SetModel(&model); auto*win=r->m_window; auto*gl=r->m_genlist; PR(win,"focused") PR(win,"focus,in") PR(win,"unfocused") PR(gl,"focused") PR(gl,"unfocused") PR(gl,"item,focused") PR(gl,"item,unfocused") PR(gl, "realized") PR(gl,"filled") }
  void TearDown() override { dump("end"); r.reset(); dump("destroyed"); }
  void dump(const char* t) { std::cout << "== " << t << "\n"; for (auto& l : Log()) std::cout << l.function << ": " << l << "\n"; ClearLog();
     std::cout << "model: "; for (auto& h : model.history) std::cout << h << " "; model.history.clear(); 
     if (r) {std::cout << "\nfocused: "; auto* f=r->m_genlist? elm_object_focused_item_get(r->m_genlist):nullptr; for (auto* it=elm_genlist_first_item_get(r->m_genlist); it; it=elm_genlist_item_next_get(it)) if (elm_object_item_focus_get(it)) std::cout << static_cast<AppListItem*>(elm_object_item_data_get(it))->GetUnigueId(); std::cout << " " << f << " genlist focus " << int(elm_object_focus_get(r->m_genlist)); } std::cout << "\n"; }
};
TEST_F(Explore, FocusFirst) {
  toolkit.GiveFocus(r->m_window); dump("focus given");
  model.Show({&a,&b,&c}, nullptr); dump("shown"); model.Select(&a); dump("selected");
  toolkit.Settle(); dump("settled");
  toolkit.PressKey("Down"); dump("down"); toolkit.PressKey("Down"); dump("down");
  toolkit.PressKey("Return"); dump("return");
  EXPECT_TRUE(toolkit.SavePicture(r->m_window, "/tmp/pres.png"));
}
TEST_F(Explore, FocusLate) {
  toolkit.TakeFocus(r->m_window); dump("no focus");
  model.Show({&a,&b,&c}, nullptr); model.Select(&a); model.Select(&c); dump("shown");
  toolkit.Settle(); dump("settled");
  toolkit.GiveFocus(r->m_window); dump("focus given");
}
TEST_F(Explore, FocusLateShownNotSettled) {
  toolkit.TakeFocus(r->m_window); dump("no focus");
  model.Show({&a,&b,&c}, nullptr); model.Select(&a); model.Select(&c); dump("shown");
  toolkit.GiveFocus(r->m_window); dump("focus given");
}
TEST_F(Explore, FocusLostAndBack) {
  toolkit.GiveFocus(r->m_window); 
  model.Show({&a,&b,&c}, nullptr); model.Select(&a); toolkit.Settle(); dump("shown");
  toolkit.TakeFocus(r->m_window); dump("focus lost");
  model.Select(&c); toolkit.Settle(); dump("c selected");
  toolkit.GiveFocus(r->m_window); dump("focus back");
}
TEST_F(Explore, Single) {
  toolkit.GiveFocus(r->m_window); 
  model.Show({&a}, nullptr); model.Select(&a); toolkit.Settle(); dump("shown");
}
TEST_F(Explore, SingleLate) {
  toolkit.GiveFocus(r->m_window); toolkit.Settle();
  model.Show({&a}, &a); toolkit.Settle(); dump("shown");
  model.Show({}, nullptr); dump("cleared"); toolkit.Settle(); dump("settled");
  model.Show({&a,&b}, &a); toolkit.Settle(); dump("shown");
  toolkit.PressKey("Down"); dump("down");
}
TEST_F(Explore, DeleteFocused) {
  toolkit.GiveFocus(r->m_window); toolkit.Settle();
  model.Show({&a,&b,&c}, &b); toolkit.Settle(); dump("shown");
  model.Show({&a,&c}, &c); dump("removed"); toolkit.Settle(); dump("settled");
  model.Show({&a}, &a); dump("removed"); toolkit.Settle(); dump("settled");
}
TEST_F(Explore, FirstBeforeFocus) {
  toolkit.TakeFocus(r->m_window); dump("no focus");
  model.Show({&a,&b,&c}, nullptr); model.Select(&a); toolkit.Settle(); dump("settled");
  toolkit.GiveFocus(r->m_window); dump("focus given");
  toolkit.PressKey("Down"); dump("down");
}
TEST_F(Explore, DestroyFocused) {
  toolkit.GiveFocus(r->m_window); 
  model.Show({&a,&b,&c}, &b); toolkit.Settle(); dump("settled");
  r.reset();
}
TEST_F(Explore, Matrix) {
  toolkit.GiveFocus(r->m_window); 
  DefaultAppListItem d{"Delta","d"};
  std::vector<AppListItem*> all{&a,&b,&c,&d};
  for (size_t n=1;n<=4;++n) for (size_t i=0;i<n;++i) {
     model.Show({}, nullptr); toolkit.Settle();
     std::vector<AppListItem*> some(all.begin(), all.begin()+long(n));
     size_t before=toolkit.Errors().size();
     model.Show(some, some[i]); toolkit.Settle();
     ClearLog();
     std::cout << "MATRIX " << n << " " << i << " errors " << toolkit.Errors().size()-before << std::endl;
  }
}
TEST_F(Explore, MatrixUnrealisedLater) {
  toolkit.GiveFocus(r->m_window); 
  DefaultAppListItem d{"Delta","d"};
  std::vector<AppListItem*> all{&a,&b,&c,&d};
  for (size_t n=1;n<=4;++n) for (size_t i=0;i<n;++i) {
     model.Show({}, nullptr); toolkit.Settle();
     std::vector<AppListItem*> some(all.begin(), all.begin()+long(n));
     size_t before=toolkit.Errors().size();
     model.Show(some, nullptr); toolkit.Settle(); 
     size_t mid=toolkit.Errors().size();
     model.Select(some[i]); toolkit.Settle();
     ClearLog();
     std::cout << "MATRIX " << n << " " << i << " errors " << mid-before << " " <<toolkit.Errors().size()-mid << std::endl;
  }
}
TEST_F(Explore, One) {
  if (!getenv("LATE")) toolkit.GiveFocus(r->m_window); else toolkit.TakeFocus(r->m_window);
  DefaultAppListItem d{"Delta","d"};
  std::vector<AppListItem*> all{&a,&b,&c,&d};
  size_t n=size_t(atoi(getenv("N"))), i=size_t(atoi(getenv("I")));
     std::vector<AppListItem*> some(all.begin(), all.begin()+long(n));
     model.Show(some, nullptr); model.Select(some[i]); 
  if (getenv("LATE")&&getenv("SETTLE")) toolkit.Settle();
  if (getenv("LATE")) toolkit.GiveFocus(r->m_window); 
  toolkit.Settle();  
  std::cout << "MATRIX " << n << " " << i << " errors " << toolkit.Errors().size() << std::endl;
  dump("X");
}
TEST_F(Explore, NullGenlist) {
  std::cout << elm_genlist_first_item_get(nullptr) << "\n"; toolkit.Settle();
  elm_genlist_clear(nullptr);
  elm_object_focus_allow_set(nullptr, 0);
  std::cout << elm_genlist_item_append(nullptr, nullptr, nullptr, nullptr, ELM_GENLIST_ITEM_NONE, nullptr, nullptr) << "\n";
  elm_object_item_focus_set(nullptr, 1);
  ecore_timer_reset(nullptr);
}
