Insert into FBT_Head2007 Values (20,'X','Own'),(21,'Y','Other')
Insert into FBT_ExpHead2007 Values (135,20,'Own item'),(136,21,'Other item')
Insert into FBT_ExpRate2007 Values (135,0,10),(136,0,15)
Alter Table FBT_Info Drop Doi, Drop Email, Drop ResSt, Drop SexM, Drop FName, Drop SurApp
Alter Table FBT_Challan Drop ChallanNo, Drop BSRCode, Drop ECAmt1
Alter Table FBT_AddInfo Drop areacd, Drop aotyp, Drop aorng, Drop aono, Change NOB NOB Char(1)
Alter Table FBT_AddInfo Drop Calc115WJ, Drop Amt115WJ, Drop Calc115WK, Drop Amt115WK
Alter Table FBT_AddInfo Drop Calc115WJ5, Drop Amt115WJ5, Drop IntDt
Drop Index IdxFBT on FBT_Info
Drop Index IdxFBT on FBT_Challan
Insert into FBT_Info (Code_no,ClStatus,SignP,SignD) Values ('A',2,'RAM','PARTNER')
Insert into FBT_Info (Code_no,ClStatus,SignP,SignD) Values ('B',8,'',''),('C',0,'','')
Insert into FBT_Challan (Code_No,quarter,paytype) Values ('A',2,'Self Assessment Tax (300)')
Delete from DueDt_Master Where AssYear>2008 or StatC=4
Delete from ChallanDt_Master Where AssYear>2007
Delete from SRate Where yr=2007
Delete from Bill_Type
Alter Table SRate Engine=MyISAM
Alter Table DueDt_Master Engine=MyISAM
