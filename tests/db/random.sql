# Random rows: what comes after "Insert into". <client> is a code by the number of the row, <clients> and <rows> are numbers of rows.
FBT_ExpHead2008 (SrNo,HeadId,ExpDesc) Select 1+seq*53%150,1+seq%21,'Again' from seq_1_to_60
FBT_ExpRate2008 (SrNo,NatId,IntRt) Select 1+seq*97%150,seq%8,seq%100 from seq_1_to_200
FBT_Info (Code_no,Name,Busnat,ClStatus,SurApp) Select <client>,'Name','1,3',seq%18,'00000' from seq_1_to_<clients>
FBT_Detail (Code_No,Tyear,Quarter,NatId,SrNo,ExpId,Amt) Select <client>,2006+seq*31%4,seq*13%6,Cast(seq*17%9 as Signed)-1,seq*19%12,1+seq*23%155,seq*29%100000/100 from seq_1_to_<rows>
FBT_SalDet (Code_No,Tyear,Quarter,NatId,Amt) Select <client>,2006+seq*31%4,seq*13%6,Cast(seq*17%9 as Signed)-1,seq from seq_1_to_<rows>
FBT_AddInfo (Code_No,Tyear,EmpBoth,IndiaEmp) Select <client>,2006+seq*31%4,seq%2,seq%1000 from seq_1_to_<rows> Where seq%4=0
